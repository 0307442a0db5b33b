// Whole files: what stands on the disk after a replacement that succeeded, and after one that did not.
#include "platform/SafeFile.h"

#include "tests/support/AtEnd.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <string_view>

#ifdef _WIN32
#include <windows.h>
#undef ReplaceFile
#elif defined(__unix__)
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace vantrel {
namespace {

namespace fs = std::filesystem;

class SafeFile : public testing::Test {
protected:
    void Replace(const fs::path& path, std::string_view text, OldTail tail = OldTail::Keep) {
        ReplaceFile(path, std::vector<std::uint8_t>(text.begin(), text.end()), tail,
                    [&](const std::string& warning) { warnings.push_back(warning + FileText(path)); });
    }

    /// The number of the error that `action` throws, 0 when it throws none.
    template <typename Action> static int ErrorOf(const Action& action) {
        const auto error = Thrown(action);
        return error ? error->Number() : 0;
    }

    int ReplaceError(const fs::path& path) {
        return ErrorOf([&] { Replace(path, "new"); });
    }
    static int ReadError(const fs::path& path) {
        return ErrorOf([&] { (void)ReadWholeFile(path); });
    }

    [[nodiscard]] std::size_t Entries() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.Path()), {}));
    }

    TemporaryFolder folder;
    std::vector<std::string> warnings;
};

TEST_F(SafeFile, AReplacedFileHoldsTheNewBytesAndTheOldTailOnlyWhenAsked) {
    const fs::path path = folder / "a";
    Replace(path, "0123456789");
    Replace(path, "abc");
    EXPECT_EQ(FileText(path), "abc3456789");
    Replace(path, "", OldTail::Drop);
    EXPECT_EQ(FileText(path), "");
    Replace(path, std::string_view("\0\r\n\x1A", 4));
    EXPECT_EQ(ReadWholeFile(path), (std::vector<std::uint8_t>{0, 13, 10, 26}));
    for (const std::uintmax_t beyond : {std::uintmax_t{0}, std::uintmax_t{1}}) {
        fs::resize_file(path, 16 * 1024 * 1024 + beyond);
        EXPECT_EQ(ReadError(path), beyond == 0 ? 0 : 75) << "the longest file that is read";
    }
    EXPECT_EQ(Entries(), 1U) << "no temporary file stays behind";
    EXPECT_TRUE(warnings.empty());
}

TEST_F(SafeFile, WhatIsMissingOrNoFileIsToldApart) {
    EXPECT_EQ(ReadError(folder / "none"), 53);
    EXPECT_EQ(ReadError(folder / "none/none"), 76);
    EXPECT_EQ(ReadError(folder.Path()), 75);
    EXPECT_EQ(ReplaceError(folder / "none/none"), 76);
    EXPECT_EQ(ReplaceError(folder.Path()), 75);
    EXPECT_EQ(ReplaceError(folder / std::string(5000, 'x')), 75);
    EXPECT_EQ(Entries(), 0U);
}

#ifdef _WIN32

TEST_F(SafeFile, AFileThatAnotherProgramHoldsOpenIsInUseAndNeverWrittenInPlace) {
    const fs::path path = folder / "a";
    for (const DWORD share : {0, FILE_SHARE_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE}) {
        WriteText(path, "old text");
        // Who lets others delete the file may find it replaced, on systems that can do that.
        const bool mayBeReplaced = (share & FILE_SHARE_DELETE) != 0;
        std::string said;
        {
            HANDLE held = CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr);
            const AtEnd release([held] { CloseHandle(held); });
            said = ErrorText([&] { Replace(path, "new"); });
            EXPECT_TRUE(mayBeReplaced || !said.empty()) << share;
            EXPECT_EQ(ErrorOf([&] { RequireReplaceable(path); }), mayBeReplaced ? 0 : 75) << share;
            EXPECT_EQ(ReadError(path), share == 0 ? 75 : 0) << share;
        }
        EXPECT_EQ(said.find("in use by another program") == std::string::npos, said.empty()) << said;
        EXPECT_EQ(FileText(path), said.empty() ? "new text" : "old text");
        EXPECT_EQ(Entries(), 1U);
    }
    EXPECT_TRUE(warnings.empty()) << "nobody is asked for leave to risk the file";
}

TEST_F(SafeFile, ANameThatNoFileCanHaveIsNamedAsTheReason) {
    const std::string said = ErrorText([&] { Replace(folder / "a?b", "new"); });
    EXPECT_NE(said.find("no name that a file can have"), std::string::npos) << said;
}

#elif defined(__unix__)

/// Permissions mean nothing to the superuser, as whom tests may run.
auto AsOrdinaryUser() {
    const bool changed = geteuid() == 0 && seteuid(65534) == 0;
    return AtEnd([changed] {
        if (changed && seteuid(0) != 0) std::abort();
    });
}

/// No file of this process can grow beyond so many bytes; the host's signal about it is `action`.
auto WithSmallFiles(rlim_t most, void (*action)(int) = SIG_IGN) {
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{most, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    return AtEnd([before, handler = std::signal(SIGXFSZ, action)] {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    });
}

constexpr auto Everybody = static_cast<fs::perms>(0777);
constexpr auto ReadOnlyFolder = static_cast<fs::perms>(0555);

TEST_F(SafeFile, LinksStayLinksPermissionsAreKeptAndReadersOfTheOldFileKeepIt) {
    WriteText(folder / "file", "old text");
    fs::permissions(folder / "file", static_cast<fs::perms>(0664));
    std::ifstream reader(folder / "file");
    fs::create_directory(folder / "sub");
    fs::create_symlink("../file", folder / "sub/inner");
    fs::create_symlink("sub/inner", folder / "outer");
    fs::create_symlink("not-yet", folder / "dangling");
    fs::create_symlink("round", folder / "round");
    Replace(folder / "outer", "new");
    Replace(folder / "dangling", "born");
    EXPECT_EQ(FileText(folder / "file") + FileText(folder / "not-yet"), "new textborn");
    EXPECT_TRUE(fs::is_symlink(folder / "outer") && fs::is_symlink(folder / "dangling"));
    EXPECT_EQ(ReplaceError(folder / "round"), 75);
    EXPECT_EQ(fs::status(folder / "file").permissions(), static_cast<fs::perms>(0664));
    std::string seen;
    reader >> seen;
    EXPECT_EQ(seen, "old");
}

TEST_F(SafeFile, AFolderThatTakesNoFileIsWrittenInPlaceAfterAWarning) {
    const fs::path path = folder / "a";
    WriteText(path, "old text");
    fs::permissions(path, Everybody);
    fs::permissions(folder.Path(), ReadOnlyFolder);
    const AtEnd open([&] { fs::permissions(folder.Path(), Everybody); });
    const auto user = AsOrdinaryUser();
    Replace(path, "new");
    EXPECT_EQ(FileText(path), "new text");
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_TRUE(warnings[0].ends_with("old text")) << "the warning comes before the file changes";
    EXPECT_NE(warnings[0].find(path.string()), std::string::npos);
    EXPECT_EQ(ReplaceError(folder / "b"), 70) << "there is nothing to write in place";
    for (const auto& [limit, said] : {std::pair{0, "is as it was"}, {5, "only in part"}}) {
        const auto small = WithSmallFiles(static_cast<rlim_t>(limit));
        const auto told = Thrown([&] { Replace(path, "new text"); });
        EXPECT_TRUE(told && told->Number() == 61 && told->Description().find(said) != std::string::npos) << said;
    }
}

TEST_F(SafeFile, AProtectedFileIsNotReplacedAndAClosedOneNotRead) {
    fs::permissions(folder.Path(), Everybody);
    const auto user = AsOrdinaryUser();
    const fs::path path = folder / "a";
    WriteText(path, "old");
    fs::permissions(path, static_cast<fs::perms>(0444));
    EXPECT_EQ(ReplaceError(path), 70);
    EXPECT_EQ(ErrorOf([&] { RequireReplaceable(path); }), 70);
    EXPECT_EQ(ErrorOf([&] { RequireReplaceable(folder / "b"); }), 0);
    fs::permissions(path, fs::perms::none);
    EXPECT_EQ(ReadError(path), 70);
    fs::permissions(path, Everybody);
    EXPECT_EQ(FileText(path), "old");
    if (const fs::path shorter = "/sys/devices/system/cpu/online"; fs::exists(shorter)) { // Than its system says.
        EXPECT_EQ(ReadWholeFile(shorter).size(), FileText(shorter).size());
    }
}

TEST_F(SafeFile, WhatAKilledReplacementLeftIsClearedByTheNextOneOfThatFile) {
    const auto killed = [&](const char* name) {
        const auto limit = WithSmallFiles(100, [](int) { _exit(1); });
        ReplaceFile(folder / name, std::vector<std::uint8_t>(1000), OldTail::Keep, {});
    };
    for (const char* name : {"a", "a", "b"})
        EXPECT_EXIT(killed(name), testing::ExitedWithCode(1), "") << "the limit ends it in the middle";
    EXPECT_EQ(Entries(), 2U) << "one for each file";
    Replace(folder / "a", "new");
    EXPECT_EQ(Entries(), 2U) << "the file, and what another one left behind";
    Replace(folder / "b", "new");
    EXPECT_EQ(Entries(), 2U) << "both files";
}

TEST_F(SafeFile, OneWhoseFileHasASecondNameIsTold) {
    WriteText(folder / "a", "old");
    fs::create_hard_link(folder / "a", folder / "b");
    Replace(folder / "a", "new");
    Replace(folder / "a", "newer");
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_NE(warnings[0].find("the other one keeps the old.old"), std::string::npos) << warnings[0];
    EXPECT_EQ(FileText(folder / "b"), "old");
}

#endif

} // namespace
} // namespace vantrel
