// The one link to the target board: port and settings, byte exchange, reads and writes of values, address helpers.
// Shows its own failures through Dialogs; callers never report them again. Knows no window and no document.
#pragma once

#include "link/PortSettings.h"
#include "link/TargetAddress.h"
#include "link/TrafficLog.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/SerialPort.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// How a write ended, for callers that tell the user what reached the board; the boxes have been shown by then.
enum class WriteOutcome {
    Written, ///< Every byte was echoed at once.
    Refused, ///< The value or the address is not one that can be written; nothing was sent for it.
    NotConfirmed, ///< The board's echoes did not match, twice, or came only after a silence.
    LinkFailed, ///< The board could not be reached or not be put in write mode.
};

/// What replaces the stored settings while the program runs (the console names its port on the command line).
struct PortOverride {
    std::optional<int> number;
    std::optional<std::string> speed;
    bool leaveFileAlone = false; ///< The settings file is read when it is there, but neither created nor mended.
};

class RSComm {
public:
    /// `settingsFile`: where `RSPort.cfg` is kept. `range`: the port numbers that may be chosen.
    RSComm(std::filesystem::path settingsFile, PortRange range, Clock& clock, Dialogs& dialogs);
    RSComm(const RSComm&) = delete;
    RSComm& operator=(const RSComm&) = delete;

    // Port and settings (RSCommPort.cpp)

    /// Full path of `RSPort.cfg`, UTF-8.
    [[nodiscard]] std::string CommSettingsFile() const;
    /// For the openings to come; devices are plugged in and pulled while the program runs.
    void SetPortRange(PortRange range) { range_ = range; }
    void SetPortOverride(PortOverride override) { override_ = std::move(override); }
    /// Reads the settings, opens `port` and probes the board. `OnlineMode` tells afterwards whether it answered. An
    /// error is shown as "Comm Port Error" and leaves the port closed. `port` must outlive the link's use of it.
    void OpenRSComm(SerialPort& port);
    /// Says goodbye to the board, unless the link has failed, and closes the port.
    void CloseRSComm();

    // State

    /// The program's ONLINE/OFFLINE state.
    [[nodiscard]] bool OnlineMode() const { return onlineMode_; }
    void SetOnlineMode(bool online) { onlineMode_ = online; }
    /// The board stopped answering and the user gave up; every exchange fails at once until the port is opened again.
    [[nodiscard]] bool LinkFailed() const { return linkFailed_; }
    /// Reading the settings or configuring the port raised an error.
    [[nodiscard]] bool InitFailed() const { return initFailed_; }
    /// The mode that the board was last put in: 0 none, 1 read, 2 write.
    [[nodiscard]] int TargetMode() const { return targetMode_; }
    /// An operation, with every box that it shows, is under way; no other may begin.
    [[nodiscard]] bool Busy() const { return busy_ > 0; }
    [[nodiscard]] const PortSettings& Settings() const { return settings_; }
    /// How often a port that was lost has been opened again since OpenRSComm. What the board lost in between is
    /// unknown.
    [[nodiscard]] int Reopened() const { return reopened_; }

    // Values (RSCommProtocol.cpp)

    /// The value at `address` as decimal text without a leading blank; "0" when it could not be read.
    std::string RSRead(const std::string& address);
    /// True when what the last RSRead returned is not to be relied on: it got no value (its "0" is none), or the board
    /// was silent within the value, so that the answer to a repeated sync byte may have been taken for data.
    [[nodiscard]] bool ReadFailed() const { return readFailed_; }
    /// Waits 5 ms for a byte that nothing asked for. True when one came: the answers are out of step, and the value
    /// read last may hold the answer to an earlier byte. A walk over many values shows that at the next echo by itself.
    bool SurplusFollows();
    /// Writes `value` at `address`, and once more when an echo did not match. Blanks, "%", ",", "." and the degree sign
    /// in `value` are dropped: "1,000" is 1000 and "12.5" is 125.
    WriteOutcome RSWrite(const std::string& address, const std::string& value);

    /// Says that programs are not downloaded here; sends nothing (RSCommProgram.cpp).
    void DumpProgram();

    // Identity and modes (RSCommIdentity.cpp). A board type is the character code of the board's one-character
    // identifier.

    /// The model name of a board type; "x Is Not Defined." for an unknown one, x being its character.
    [[nodiscard]] static std::string TargetboardName(std::int16_t boardType);
    /// The program-library letter of a board type; empty when it has none.
    [[nodiscard]] static std::string LCFBoardIndex(std::int16_t boardType);
    /// Marked hexadecimal digits as plain ones: ":;<=>?" stand for A to F, every other character for itself.
    [[nodiscard]] static std::string MarkHex2HEX(std::string digits);
    /// The board's firmware revision (B8159); 0 without any traffic while the port is closed or the link has failed,
    /// and when the read fails.
    [[nodiscard]] std::int16_t FirmwareRev();
    /// The board's current fault code (B8176); 0 when the read fails.
    [[nodiscard]] std::int16_t FaultCode();
    /// Where `FaultErrCodes.txt` is; without it no code has a description.
    void SetFaultFile(std::filesystem::path faultFile) { faultFile_ = std::move(faultFile); }
    /// "Fault Code (0AH): " and the description of the first record with that code. A file that cannot be read is
    /// reported as "RSComm FaultDescription".
    [[nodiscard]] std::string FaultDescription(std::int16_t code);

    /// A program download is in progress; with it, or with an upload, whether the program's identification block is
    /// under way and which program address is. Set by those operations alone, the upload mode by its caller, too.
    [[nodiscard]] bool InProgramMode() const { return inProgramMode_; }
    [[nodiscard]] bool InUploadMode() const { return inUploadMode_; }
    void SetInUploadMode(bool uploading) { inUploadMode_ = uploading; }
    [[nodiscard]] bool WritingIdent() const { return writingIdent_; }
    [[nodiscard]] bool ReadingIdent() const { return readingIdent_; }
    [[nodiscard]] const std::string& CurrentProgramAdd() const { return currentProgramAdd_; }

    /// From now on every exchanged byte is told to `log` (none: nullptr), which must outlive its use.
    void SetTrafficLog(TrafficLog* log) { trafficLog_ = log; }

    // Addresses (RSCommAddressing.cpp)

    /// The byte address of a user program's input or output name ("X30.2") on a board; the name itself when the board
    /// has no such point. `board`: the index that the board reports.
    [[nodiscard]] static std::string EquateAdd(const std::string& variable, std::int16_t board);
    /// Whether an address text is allowed on a board.
    [[nodiscard]] static bool ValidAdd(const std::string& variable, std::int16_t board);
    /// Two octal digits only, exact for 0 to 63; Dec2Octal(100) is 124, which callers rely on.
    [[nodiscard]] static std::int16_t Dec2Octal(std::int16_t number);
    [[nodiscard]] static std::int16_t Octal2Dec(std::int16_t number);

private:
    friend struct RSCommPeer; ///< The tests' way to what only later operations will call.

    /// What ExchangeByte returns for no answer or a failed link.
    static constexpr int NoAnswer = 9999;
    enum class Reply { Wait, NoReply };
    enum class Receiver { Keep, FlushFirst };

    /// Marks the link busy for as long as it lives.
    class Operation {
    public:
        explicit Operation(RSComm& link) : link_(link) { ++link_.busy_; }
        Operation(const Operation&) = delete;
        Operation& operator=(const Operation&) = delete;
        ~Operation() { --link_.busy_; }

    private:
        RSComm& link_;
    };

    void InitializeRSComm(SerialPort& port);
    [[nodiscard]] PortSettings EffectiveSettings();
    void ShowPortError(const RuntimeError& error);

    int ExchangeByte(std::uint8_t byte, Reply reply = Reply::Wait, Receiver receiver = Receiver::Keep);
    void Send(std::uint8_t byte);
    int AwaitAnswer();
    bool AskAfterNoAnswer(PortWait how);
    void Log(std::optional<std::uint8_t> answer);
    bool SetTargetMode(int mode, std::uint8_t modeByte);
    void SettleLine();
    void DiscardReceived();
    bool AskAfterNoMode();
    std::int16_t ReadByteValue(int byte);
    /// Whether a PLS board says that it is ready for a PLS function; asks the user after 3 s, then every 2 s.
    bool PLSReady();
    bool AskAfterNotReady();
    std::string ReadTarget(const std::string& address);
    WriteOutcome WriteTarget(const std::string& address, const std::string& value);
    std::optional<std::vector<std::uint8_t>> ReadBytes(const TargetAddress& from);
    WriteOutcome WriteNumber(const TargetAddress& to, std::uint64_t number);
    WriteOutcome WriteBit(const TargetAddress& to, std::uint64_t number);
    WriteOutcome SendBytes(std::int32_t byteAddress, const std::vector<std::uint8_t>& bytes);
    WriteOutcome Refuse(const std::string& reason, MessageIcon icon);

    std::filesystem::path settingsFile_;
    std::filesystem::path faultFile_;
    PortRange range_;
    Clock& clock_;
    Dialogs& dialogs_;

    SerialPort* port_ = nullptr;
    TrafficLog* trafficLog_ = nullptr;
    struct SentByte {
        MonotonicTime at;
        std::uint8_t byte;
    };
    std::optional<SentByte> unlogged_; ///< Sent, and its fate not told to the log yet.
    PortSettings settings_;
    PortOverride override_;
    bool initFailed_ = false;
    bool onlineMode_ = false;
    bool linkFailed_ = false;
    bool readFailed_ = false;
    bool retryWrite_ = false;
    bool repeated_ = false; ///< The board was silent within the value under way; a sync byte was sent again.
    bool unsettled_ = false; ///< An answer was not the expected one; more may still be on its way.
    bool inProgramMode_ = false;
    bool inUploadMode_ = false;
    bool writingIdent_ = false;
    bool readingIdent_ = false;
    std::string currentProgramAdd_;
    int targetMode_ = 0;
    int busy_ = 0;
    int reopened_ = 0;

    /// The address read last and its parse are one value, so that neither can be stale against the other.
    struct LastRead {
        std::string text;
        TargetAddress parsed;
    };
    std::optional<LastRead> lastRead_;
};

} // namespace vantrel
