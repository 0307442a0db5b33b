// Real ports, and simulated boards that live as long as their port does.
#include "console/HostPorts.h"

#include "platform/AsioSerialPort.h"
#include "platform/HostSerialPort.h"
#include "platform/RuntimeError.h"
#include "platform/SerialDevices.h"
#include "simulator/BoardServer.h"
#include "simulator/SimulatedBoard.h"
#include "simulator/SimulatedPort.h"

#include <thread>
#include <utility>

namespace vantrel {

namespace {

/// A board and the port to it in one.
struct BoardInProcess {
    explicit BoardInProcess(Clock& clock) : board(BoardStart(clock)), port(board, clock, LinePacing::LineSpeed) {}

    SimulatedBoard board;
    SimulatedPort port;
};

/// A board served by a thread at a device of its own, and the real serial port to that device.
class BoardBehindDevice {
public:
    explicit BoardBehindDevice(Clock& clock)
        : board_(BoardStart(clock)), server_(board_, clock, DemonstrationSpeed), port(clock, server_.Device()),
          thread_([this] { Serve(); }) {}
    BoardBehindDevice(const BoardBehindDevice&) = delete;
    BoardBehindDevice& operator=(const BoardBehindDevice&) = delete;
    ~BoardBehindDevice() {
        port.Close();
        stop_ = true;
    }

private:
    void Serve() {
        try {
            server_.Run(stop_);
        } catch (const RuntimeError&) {
            // Nobody serves the device any more, which its port notices by itself: the board has gone silent.
            return;
        }
    }

    SimulatedBoard board_;
    BoardServer server_;
    std::atomic<bool> stop_{false};

public:
    AsioSerialPort port;

private:
    std::jthread thread_;
};

template <typename Owner> std::shared_ptr<SerialPort> PortOf(const std::shared_ptr<Owner>& owner) {
    return {owner, &owner->port};
}

BoardPort InProcess(Clock& clock) {
    return {PortOf(std::make_shared<BoardInProcess>(clock)), "a simulated board in this program"};
}

BoardPort BehindDevice(Clock& clock) {
    try {
        const auto board = std::make_shared<BoardBehindDevice>(clock);
        return {PortOf(board), "a simulated board at " + board->port.Device()};
    } catch (const RuntimeError&) {
        return InProcess(clock);
    }
}

} // namespace

BoardPort ReachBoard(const PortChoice& choice, Clock& clock, const std::filesystem::path& supportFolder) {
    switch (choice.kind) {
    case PortChoice::Kind::Number:
        return {std::make_shared<HostSerialPort>(clock, supportFolder),
                "COM" + std::to_string(choice.number) + " (" + SerialDeviceOf(choice.number, supportFolder) + ")"};
    case PortChoice::Kind::Device:
        return {std::make_shared<HostSerialPort>(clock, choice.device), choice.device};
    case PortChoice::Kind::Demonstration:
        return BehindDevice(clock);
    case PortChoice::Kind::Simulated:
        break;
    }
    return InProcess(clock);
}

} // namespace vantrel
