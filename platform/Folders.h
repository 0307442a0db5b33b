// Where the program's own files are: the folder that it was installed in, or, where that cannot be written, the user's.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace vantrel {

/// The folder of the running executable.
[[nodiscard]] std::filesystem::path ExecutableFolder();
/// The folder for this user's program data ("%APPDATA%\VANTREL"; "$XDG_DATA_HOME/vantrel" or its default).
[[nodiscard]] std::filesystem::path UserDataFolder();
/// The folder that an environment variable names; empty when it is not set or empty. Before any other thread runs.
[[nodiscard]] std::filesystem::path FolderFromVariable(const std::string& name);
/// Whether new files can be made in an existing folder.
[[nodiscard]] bool FolderIsWritable(const std::filesystem::path& folder);

/// The program folder and its sub-folders, which are found without regard to case.
class ProgramFolder {
public:
    explicit ProgramFolder(std::filesystem::path folder, std::filesystem::path userFolder = UserDataFolder());
    /// The folder named on the command line, else by the variable VANTREL_FOLDER, else the executable's.
    [[nodiscard]] static ProgramFolder Find(const std::optional<std::filesystem::path>& named);

    [[nodiscard]] const std::filesystem::path& Path() const { return folder_; }
    /// The sub-folder or file of that name, whatever its case on the disk; the plain join when there is none yet.
    [[nodiscard]] std::filesystem::path Entry(const std::string& name) const;
    /// A file that ships with the program, "Support/FaultErrCodes.txt".
    [[nodiscard]] std::filesystem::path File(const std::string& subFolder, const std::string& name) const;
    /// The user's own data folder, whether or not there is one yet.
    [[nodiscard]] const std::filesystem::path& UserFolder() const { return userFolder_; }
    /// A text of the folder "Support" that people may edit: the user's own copy where the program folder cannot be
    /// written and there is one, otherwise the one that ships with the program.
    [[nodiscard]] std::filesystem::path SupportFile(const std::string& name) const;
    /// The folder "Support" in effect, where settings and links to serial devices are kept: the program folder's when
    /// that can be written, otherwise the one in the user's data folder.
    [[nodiscard]] std::filesystem::path SupportFolder() const;
    /// Where `name` of the folder "Support" is kept when the program writes it.
    [[nodiscard]] std::filesystem::path WritableSupportFile(const std::string& name) const;

private:
    std::filesystem::path folder_;
    std::filesystem::path userFolder_;
};

} // namespace vantrel
