// The check of the connection, from the port to the board, step by step: what was seen, and what to do about it. Sends
// nothing but what going ONLINE and reading send. Knows the link and its port.
#pragma once

#include "link/BareLine.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

struct CheckStep {
    enum class Outcome {
        Good,
        Notice, ///< It works, and could be better; or it says something without being wrong.
        Bad,
    };
    std::string name;
    Outcome outcome = Outcome::Good;
    std::string seen;
    std::string todo{}; ///< Empty when there is nothing to do.
};

/// What exchanges that change nothing on the board took.
struct ExchangeFigures {
    std::size_t tried = 0;
    std::size_t lost = 0; ///< No answer within a second.
    std::size_t late = 0; ///< An answer after that second, or more than 60 ms and ten usual answers after its byte.
    std::size_t wrong = 0; ///< Another answer than the one that was due.
    std::size_t doubled = 0; ///< More than one byte came back.
    std::vector<MonotonicTime> times{}; ///< Of the answers that came, ascending.

    /// The time that so much of them, from 0 to 1, took at most; 0 when none came.
    [[nodiscard]] MonotonicTime Share(double share) const;
    [[nodiscard]] bool Flawless() const { return lost + late + wrong + doubled == 0; }
};

/// What is known before anything is asked.
struct CheckSubject {
    std::string portName; ///< As the user knows it.
    // Of the board's user program on disk: no board tells its own type.
    std::int16_t boardType = 0; ///< 0: unknown.
    std::string identOnDisk{}; ///< UTF-8; empty: unknown.
};

/// As the board told it.
struct CheckedBoard {
    int firmware = 0;
    int networkAddress = 0;
    std::string ident; ///< Of the program in it, eight characters, UTF-8.
    int revisions[2] = {0, 0}; ///< In the order in which they are shown: that of the higher address first.
    std::string model{}; ///< Of the program on disk with the same ident; empty where there is none.
};

/// What came of it all.
struct CheckResult {
    enum class Kind { Healthy, Flawed, NoLink, Cancelled };
    Kind kind = Kind::NoLink;
    std::string verdict; ///< One sentence.
    std::string todo; ///< Empty when there is nothing to do.
    std::optional<ExchangeFigures> figures{};
    std::optional<CheckedBoard> board{};
};

/// Who shows it.
class CheckDisplay {
public:
    CheckDisplay() = default;
    CheckDisplay(const CheckDisplay&) = delete;
    CheckDisplay& operator=(const CheckDisplay&) = delete;
    virtual ~CheckDisplay() = default;

    /// A step begins; its result follows.
    virtual void Begins(const std::string& step) = 0;
    virtual void Ends(const CheckStep& step) = 0;
    virtual void Progress(std::size_t done, std::size_t all) = 0;
};

class ConnectionCheck {
public:
    /// Everything must outlive it. `port` is the link's.
    ConnectionCheck(RSComm& link, SerialPort& port, CheckSubject subject, Clock& clock, TurnQueue& turns,
                    CheckDisplay& display);

    /// While the link is ONLINE the open port and its speed are used, else the port is opened at 9600 and at 19200,
    /// where a speed can be set, and closed in the end. One run.
    [[nodiscard]] TaskOf<CheckResult> Run();
    /// Ends it as soon as it waits, in good order.
    void Cancel();

    static constexpr std::size_t Exchanges = 200;

private:
    struct Probe {
        std::string speed;
        bool unasked = false; ///< Something came before anything was sent.
        std::vector<BareLine::Heard> answers; ///< Empty where something went on talking: nothing was sent.
        [[nodiscard]] bool Answered() const;
        [[nodiscard]] bool Echoed() const;
        [[nodiscard]] bool Silent() const;
    };
    enum class Went { On, Ended };

    static constexpr MonotonicTime AnswerTime = std::chrono::seconds(1);
    /// Longer than a board keeps a value that was sent by half: no byte of the check can complete one.
    static constexpr MonotonicTime Quiet = std::chrono::milliseconds(600);
    /// Longer than whatever a byte of the wrong speed is heard as.
    static constexpr MonotonicTime BehindAnAnswer = std::chrono::milliseconds(60);

    // (ConnectionCheck.cpp)
    [[nodiscard]] TaskOf<Went> CheckOffline();
    [[nodiscard]] TaskOf<Went> CheckOnline(RSComm::Line* line);
    [[nodiscard]] TaskOf<Went> OpenFirst(PortSettings settings);
    [[nodiscard]] TaskOf<Went> TryBothSpeeds(PortSettings settings);
    [[nodiscard]] TaskOf<Went> TrySpeed(PortSettings settings);
    /// False after the reason has been noted, or a cancel.
    [[nodiscard]] TaskOf<bool> Reopen(PortSettings settings, CheckStep* whyNot);
    [[nodiscard]] CheckStep StepOf(const Probe& probe) const;
    Went JudgeProbes(const std::string& wanted);
    void ConcludeUnanswered();
    /// `all` where every speed was tried, else the one that was; nothing where a speed is none of ours.
    [[nodiscard]] std::string AtSpeeds(const char* all) const;
    /// As a step names it, by the speed that was tried.
    [[nodiscard]] std::string AnswerStep(const std::string& speed) const;
    // (ConnectionCheckExchanges.cpp)
    [[nodiscard]] static bool IsAcknowledged(const BareLine::Heard& heard);
    [[nodiscard]] TaskOf<bool> EnterReadMode();
    [[nodiscard]] TaskOf<Went> Measure();
    [[nodiscard]] TaskOf<bool> MeasureOne(std::uint8_t byte, std::optional<std::uint8_t>* due);
    void NoteSurplus(const ExchangeFigures& before);
    void Judge(const ExchangeFigures& figures);
    [[nodiscard]] CheckStep JudgeFlawless(CheckStep step);
    /// A device of this computer, no network in between.
    [[nodiscard]] bool Local() const;
    /// A server passes the bytes and nothing else: which speed it has is neither set nor seen.
    [[nodiscard]] bool Raw() const;
    [[nodiscard]] TaskOf<Went> AskBoard();
    [[nodiscard]] TaskOf<std::optional<std::uint8_t>> ReadByte(int address);

    void End(const CheckStep& step);
    void Conclude(CheckResult::Kind kind, const std::string& verdict, const std::string& todo);

    RSComm& link_;
    SerialPort& port_;
    CheckSubject subject_;
    Clock& clock_;
    TurnQueue& turns_;
    CheckDisplay& display_;
    std::optional<BareLine> line_;
    std::vector<Probe> probes_;
    PortSettings settings_;
    ExchangeFigures figures_;
    CheckResult result_;
    bool cancelled_ = false;
};

} // namespace vantrel
