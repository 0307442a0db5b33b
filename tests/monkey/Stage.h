// What the monkey is let loose on: the program as a user starts it, on a simulated board whose line fails, in virtual
// time; and what must hold of it whatever was done. File dialogs are a small window of this file's own.
#pragma once

#include "app/frmMDIMain.h"
#include "simulator/SimulatedPort.h"
#include "tests/support/VirtualClock.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace vantrel {
class frmMain;
}

namespace vantrel::monkey {

/// The same numbers on every host.
class Chance {
public:
    explicit Chance(std::uint32_t seed) : engine_(seed) {}
    /// 0..count-1; `count` is at least 1.
    [[nodiscard]] int Below(int count) { return static_cast<int>(engine_() % static_cast<std::uint32_t>(count)); }
    [[nodiscard]] bool OneIn(int count) { return Below(count) == 0; }
    template <typename List> [[nodiscard]] auto& Of(List& list) {
        return list[static_cast<typename List::size_type>(Below(static_cast<int>(list.size())))];
    }

private:
    std::mt19937 engine_;
};

class Stage {
public:
    /// `folder`: of this stage alone; the program's data is copied there from `data`. `note` hears what happens by
    /// itself.
    Stage(const std::filesystem::path& folder, const std::filesystem::path& data, Chance& chance);
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    /// A new start of the program on what the last one left behind.
    void Start();
    void End() { frame.reset(); }
    /// Lets the clock go on, and every timer of the program with it.
    void PassTime();
    /// Something goes wrong with the board or the line, or is mended; says what.
    std::string TroubleLine();
    void HealLine();
    /// Somebody else changes, spoils or removes a file; says which.
    std::string TroubleFiles();
    [[nodiscard]] std::filesystem::path AnyFile();
    /// Nobody waits for the board, for a turn or for an answer.
    [[nodiscard]] bool Resting() const;

    /// What is wrong with a program at rest, which is left OFFLINE; a line each. `pump` lets events through until the
    /// program rests again; false when it does not.
    [[nodiscard]] std::string Faults(const std::function<bool()>& pump);

    VirtualClock clock;
    SimulatedBoard board;
    SimulatedPort port{board, clock, LinePacing::None};
    std::unique_ptr<frmMDIMain> frame;

private:
    [[nodiscard]] frmMain& Editor() const;
    [[nodiscard]] std::optional<FileChoice> PickFile(const FileQuestion& question, bool saving);
    [[nodiscard]] std::string LookFaults() const;
    [[nodiscard]] std::string DisplayFaults(const std::function<bool()>& pump);
    [[nodiscard]] std::string UndoFaults(const std::function<bool()>& pump);

    std::filesystem::path folder_;
    Chance& chance_;
};

} // namespace vantrel::monkey
