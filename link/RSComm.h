// The one link to the target board: port and settings, byte exchange, reads and writes of values, address helpers.
// Shows its own failures through Dialogs; callers never report them again. Every operation is a task that waits without
// holding up the event loop. Knows no window and no document.
#pragma once

#include "link/AnswerTimes.h"
#include "link/PortSettings.h"
#include "link/Reading.h"
#include "link/TargetAddress.h"
#include "link/TrafficLog.h"
#include "link/WriteResult.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/SerialPort.h"
#include "platform/Task.h"
#include "platform/TurnLock.h"
#include "platform/TurnQueue.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vantrel {

/// What replaces the stored settings while the program runs (the console names its port on the command line).
struct PortOverride {
    std::optional<int> number;
    std::optional<std::string> speed;
    bool leaveFileAlone = false; ///< The settings file is read when it is there, but neither created nor mended.
    bool anySpeed = false; ///< The port works at every speed: without one the file's is taken where it can be read.
};

class RSComm {
public:
    /// `settingsFile`: where `RSPort.cfg` is kept. `range`: the port numbers that may be chosen. The rest must outlive
    /// the link, and the link all tasks of its operations.
    RSComm(std::filesystem::path settingsFile, PortRange range, Clock& clock, Dialogs& dialogs, TurnQueue& turns);
    RSComm(const RSComm&) = delete;
    RSComm& operator=(const RSComm&) = delete;

    // Port and settings (RSCommPort.cpp)

    /// Full path of `RSPort.cfg`, UTF-8.
    [[nodiscard]] std::string CommSettingsFile() const;
    /// For the openings to come; devices are plugged in and pulled while the program runs.
    void SetPortRange(PortRange range) { range_ = range; }
    void SetPortOverride(PortOverride override) { override_ = std::move(override); }
    [[nodiscard]] const PortOverride& CurrentPortOverride() const { return override_; }
    /// What the next OpenRSComm takes. Asks and writes nothing. Throws RuntimeError when the file cannot be read.
    [[nodiscard]] PortSettings SettingsToCome() const;
    /// Reads the settings, opens `port` and probes the board. `OnlineMode` tells afterwards whether it answered. An
    /// error is shown as "Comm Port Error" and leaves the port closed. `port` must outlive the link's use of it.
    [[nodiscard]] Task OpenRSComm(SerialPort& port);
    /// `OnlineMode` is off at once. Says goodbye to the board, unless the link has failed, and closes the port. The
    /// goodbye waits for one second at the most and shows no box.
    [[nodiscard]] Task CloseRSComm();

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
    /// An operation, with every box that it shows, is under way, perhaps suspended; others wait in line behind it.
    [[nodiscard]] bool Busy() const { return lock_.Held(); }
    /// Since when the board owes an answer, while it does; nothing while none is awaited.
    [[nodiscard]] std::optional<MonotonicTime> AwaitingSince() const { return awaitingSince_; }
    /// The user wants no more of the operation under way: once the board has been silent for SilenceTime, at once if it
    /// has been already, the exchange fails and `LinkFailed` is set, without a box. A board that answers in time lets
    /// the operation go on to its end. Nothing happens while none is under way.
    void GiveUp();
    static constexpr MonotonicTime SilenceTime = std::chrono::milliseconds(60);

    [[nodiscard]] const PortSettings& Settings() const { return settings_; }
    /// How often a port that was lost has been opened again since OpenRSComm. What the board lost in between is
    /// unknown.
    [[nodiscard]] int Reopened() const { return reopened_; }
    /// How often a port has been opened at all, for whoever has to notice that it was.
    [[nodiscard]] int Opened() const { return opened_; }

    // Values (RSCommValues.cpp). Each call is one operation: it waits in line for the link.

    /// The value at `address`, judged: looked at for a surplus byte behind it, and read once more when it was doubtful.
    /// For many addresses there is ReadingWalk.
    [[nodiscard]] TaskOf<Reading> Read(std::string address);
    /// What the board says, as decimal text without a leading blank, reliable or not; "0" when it says nothing.
    [[nodiscard]] TaskOf<std::string> RSRead(std::string address);
    /// Writes `value` at `address`, and once more when an echo did not match or the value was sent with a gap in it.
    /// Blanks, "%", ",", "." and the degree sign in `value` are dropped: "1,000" is 1000 and "12.5" is 125.
    [[nodiscard]] TaskOf<WriteResult> RSWrite(std::string address, std::string value);

    /// Several operations in a row that no other may come between, for as long as it lives.
    class Line {
    public:
        Line(RSComm& link, TurnLock::Hold hold) : link_(link), hold_(std::move(hold)) {}
        [[nodiscard]] TaskOf<Reading> Read(std::string address) { return link_.ReadAndLook(std::move(address)); }
        [[nodiscard]] TaskOf<WriteResult> RSWrite(std::string address, std::string value) {
            return link_.WriteTwice(std::move(address), std::move(value));
        }

        /// From now on a silence of one second fails the link, without a box.
        void Hurry() { link_.patience_ = Patience::Short; }

    private:
        RSComm& link_;
        TurnLock::Hold hold_;
    };
    /// `RSComm::Line line = co_await link.TakeLine();`
    [[nodiscard]] TaskOf<Line> TakeLine();
    /// Bytes that the board may have set to 255 since this was asked last, ascending: by half-sent writes (WriteResult
    /// names them too) and by a sync byte that came to it spoiled while it was in write mode.
    [[nodiscard]] std::vector<std::uint16_t> TakeMayHaveReached();

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
    [[nodiscard]] TaskOf<std::int16_t> FirmwareRev();
    /// The board's current fault code (B8176); 0 when the read fails.
    [[nodiscard]] TaskOf<std::int16_t> FaultCode();
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
    void SetTrafficLog(TrafficLog* log) { logs_.Set(log); }
    /// Whoever wants to be told beside it.
    [[nodiscard]] TrafficLogs& Logs() { return logs_; }

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
    friend class ReadingWalk;
    friend class BareLine;

    /// A port ends its opening by itself; this is when it is looked at again in any case.
    static constexpr MonotonicTime LongestOpening = std::chrono::seconds(10);

    /// What ExchangeByte returns for no answer or a failed link.
    static constexpr int NoAnswer = 9999;
    enum class Reply { Wait, NoReply };
    enum class Receiver { Keep, FlushFirst };

    /// How long a silent board is waited for.
    enum class Patience {
        Usual, ///< Three attempts, then the warning.
        Short, ///< One second, no box.
    };

    /// What one exchange after another says about the value between them; see ReadingWalk.
    struct Neighbour {
        enum class State { Unknown, InStep, OutOfStep } state = State::Unknown;
    };
    /// One reading of one value.
    struct Attempt {
        enum class State { Clean, Spoiled, LinkFailed } state = State::Spoiled;
        std::optional<std::uint32_t> number{};
    };
    /// The exchanges of one value: what was wrong within it.
    struct ValueState {
        bool repeated = false; ///< The board was silent; a sync byte was sent again.
        bool gap = false; ///< Two of its bytes were sent too far apart: the board may have forgotten the first.
        std::optional<MonotonicTime> lastSent{}; ///< Of the value under way.
        [[nodiscard]] bool Clean() const { return !repeated && !gap; }
    };

    void InitializeRSComm(SerialPort& port);
    /// What the settings file says; the defaults for one that cannot be read and is not needed.
    [[nodiscard]] StoredPortSettings StoredSettings() const;
    [[nodiscard]] PortSettings EffectiveSettings();
    /// Opens the port without holding up anybody; false when the user gave up, which closes it. Throws RuntimeError.
    [[nodiscard]] TaskOf<bool> OpenPort();
    void ShowPortError(const RuntimeError& error);

    // Exchanges and modes (RSCommExchange.cpp); the line is held
    [[nodiscard]] TaskOf<int> ExchangeByte(std::uint8_t byte, Reply reply = Reply::Wait,
                                           Receiver receiver = Receiver::Keep);
    void Send(std::uint8_t byte);
    [[nodiscard]] TaskOf<int> AwaitAnswer();
    class Awaited;
    int FailedAnswer(Awaited& awaited);
    [[nodiscard]] TaskOf<bool> AskAfterNoAnswer(PortWait how);
    void NoteGap(MonotonicTime sent);
    void Log(std::optional<std::uint8_t> answer);
    [[nodiscard]] TaskOf<bool> SetTargetMode(int mode, std::uint8_t modeByte);
    /// An answer, and whether it is the acknowledgement of this very byte.
    struct Handshake {
        int answer = NoAnswer;
        bool acknowledged = false;
    };
    [[nodiscard]] TaskOf<Handshake> Shake(std::uint8_t byte, Receiver receiver);
    void NoteSpoiledSync(int answer);
    [[nodiscard]] Task SettleLine();
    void OutOfStep();
    void DiscardReceived();
    [[nodiscard]] TaskOf<bool> AskAfterNoMode();
    void ForgetBoard();
    [[nodiscard]] Task Close();

    // Values (RSCommValues.cpp); the line is held
    void BeginOperation();
    [[nodiscard]] TaskOf<std::int16_t> ReadByteValue(int byte);
    /// One reading, with a surplus look behind it, and a second one when the first is doubtful.
    [[nodiscard]] TaskOf<Reading> ReadAndLook(std::string address);
    [[nodiscard]] TaskOf<Reading> ReadOnceAndLook(std::string address);
    [[nodiscard]] TaskOf<Attempt> ReadTarget(std::string address);
    [[nodiscard]] TaskOf<std::optional<std::vector<std::uint8_t>>> ReadBytes(TargetAddress from);
    /// Waits for a byte that nothing asked for. One shows that the answers are out of step: what was read last may
    /// hold the answer to an earlier byte.
    [[nodiscard]] Task LookForSurplus();
    /// From now on the next exchange tells `neighbour` whether it found the answers in step.
    void Watch(Neighbour& neighbour);
    void Forget(const Neighbour& neighbour);
    void TellNeighbour(bool inStep);
    [[nodiscard]] TaskOf<WriteResult> WriteTwice(std::string address, std::string value);
    /// What has to be sent for a number, or why not.
    struct Payload {
        std::vector<std::uint8_t> bytes{};
        std::optional<WriteOutcome> ended{};
    };
    [[nodiscard]] Payload PayloadOf(const TargetAddress& to, std::uint64_t number);
    [[nodiscard]] TaskOf<Payload> BitPayload(TargetAddress to, std::uint64_t number);
    [[nodiscard]] TaskOf<WriteOutcome> SendBytes(std::int32_t byteAddress, std::vector<std::uint8_t> bytes);
    /// `group`: address high byte, low byte, data; `stage`: which of them was not echoed as it should.
    void NoteHalfSent(const std::array<std::uint8_t, 3>& group, std::size_t stage, int echo);
    void NoteReached(int page, int low);
    [[nodiscard]] std::vector<std::uint16_t> ReachedBeside(const TargetAddress& to, std::size_t count);
    WriteOutcome Refuse(const std::string& reason, MessageIcon icon);

    /// Whether a PLS board says that it is ready for a PLS function; asks the user after 3 s, then every 2 s.
    [[nodiscard]] TaskOf<bool> PLSReady();
    [[nodiscard]] TaskOf<bool> AskAfterNotReady();

    std::filesystem::path settingsFile_;
    std::filesystem::path faultFile_;
    PortRange range_;
    Clock& clock_;
    Dialogs& dialogs_;
    TurnQueue& turns_;
    TurnLock lock_{turns_}; ///< Whose operation it is.

    SerialPort* port_ = nullptr;
    TrafficLogs logs_;
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
    bool givenUp_ = false; ///< The user wants no more of the operation under way.
    Patience patience_ = Patience::Usual;
    ValueState value_;
    std::set<std::uint16_t> mayHaveReached_; ///< By the write under way.
    std::set<std::uint16_t> untold_; ///< The same of all that was done, until somebody asks.
    bool mayBeInWriteMode_ = false; ///< The board, whatever mode it is wanted in.
    Neighbour* neighbour_ = nullptr; ///< Hears what the next exchange says.
    std::optional<MonotonicTime> awaitingSince_;
    std::optional<MonotonicTime> lastExchange_;
    AnswerTimes answerTimes_;
    bool unsettled_ = false; ///< An answer was not the expected one; more may still be on its way.
    bool inProgramMode_ = false;
    bool inUploadMode_ = false;
    bool writingIdent_ = false;
    bool readingIdent_ = false;
    std::string currentProgramAdd_;
    int targetMode_ = 0;
    int reopened_ = 0;
    int opened_ = 0;

    /// The address read last and its parse are one value, so that neither can be stale against the other.
    struct LastRead {
        std::string text;
        TargetAddress parsed;
    };
    std::optional<LastRead> lastRead_;
};

} // namespace vantrel
