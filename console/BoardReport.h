// What the passes of the target board view show, kept until it is printed. Knows the views' texts only.
#pragma once

#include "console/LinkSession.h"
#include "views/BoardMonitor.h"
#include "views/UserProgram.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace vantrel {

class BoardReport final : public BoardDisplay {
public:
    explicit BoardReport(const LinkSession& session) : session_(session) { Clear(); }

    [[nodiscard]] bool Active() const override { return !session_.Interrupted(); }
    [[nodiscard]] bool SetupWanted(std::size_t) const override { return !setupRead_; }
    void EnableOnline(bool) override {}
    void EnableReset(bool) override {}
    void ShowCaption(BoardCode which, const std::string& text) override { captions_.at(IndexOf(which)) = text; }
    void ShowDescription(BoardCode which, const std::string& text) override { descriptions_.at(IndexOf(which)) = text; }
    void ShowSetup(std::size_t field, const std::string& value) override { setup_.at(field) = value; }
    void ShowRevision(std::size_t label, const std::string& text) override { revision_.at(label) = text; }
    void ShowGoOnline(bool) override {}
    /// `byte`: SerialSetupByte or FirmwareRevisionByte, which the passes do not show or not whole.
    void ShowByte(int byte, const std::string& text);
    /// What the fields said is said: later passes over them are for the comparison of the clocks.
    void NoteSetupRead() { setupRead_ = true; }
    void ShowClockOff(const ClockComparison& compared) { clockOff_ = compared; }

    /// Forgets everything, which reads "-" then.
    void Clear();
    /// Whether every value has been read; the codes and the revision are the monitor's to tell.
    [[nodiscard]] bool Complete() const;
    /// Labels and values; a value that its field cannot have is shown whole, and marked. Or the same as JSON, codes as
    /// numbers. `codes`: as the monitor has read them.
    [[nodiscard]] std::string Text(const UserProgram& onDisk, const std::array<std::string, BoardCodeCount>& codes,
                                   bool json) const;

private:
    /// A line for people, a member of the JSON, or both. A member "clock.hour" stands in an object of its own.
    struct Entry {
        std::string label;
        std::string text;
        std::string member{};
        std::string value{}; ///< For the JSON; the text when there is none.
    };

    [[nodiscard]] std::vector<Entry> Entries(const UserProgram& onDisk,
                                             const std::array<std::string, BoardCodeCount>& codes) const;
    void AddClock(std::vector<Entry>& entries) const;
    [[nodiscard]] std::string FieldsText(std::size_t first, std::size_t count, const std::string& separator) const;

    const LinkSession& session_;
    std::array<std::string, BoardCodeCount> captions_;
    std::array<std::string, BoardCodeCount> descriptions_;
    std::array<std::string, SetupFieldCount> setup_;
    std::array<std::string, 3> revision_;
    bool setupRead_ = false;
    ClockComparison clockOff_;
    std::string serialWord_;
    std::string firmware_;
};

} // namespace vantrel
