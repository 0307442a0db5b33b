// Any bytes, in any pieces, to both ends of the telnet stream: nothing falls, pieces change nothing, and what was
// escaped comes out as it went in.
#include "fuzz/FuzzTargets.h"
#include "platform/Rfc2217.h"
#include "platform/Telnet.h"

#include <algorithm>
#include <type_traits>

namespace vantrel::fuzz {

namespace {

using telnet::Bytes;

/// What an end makes of all bytes, handed over in pieces of `piece` bytes.
template <typename End> telnet::Taken TakeInPieces(End end, Input bytes, std::size_t piece) {
    telnet::Taken all;
    for (std::size_t at = 0; at < bytes.size(); at += piece) {
        const auto taken = end.Take(bytes.subspan(at, std::min(piece, bytes.size() - at)));
        all.data.insert(all.data.end(), taken.data.begin(), taken.data.end());
        all.replies.insert(all.replies.end(), taken.replies.begin(), taken.replies.end());
        if constexpr (requires { taken.demands; })
            all.demands.insert(all.demands.end(), taken.demands.begin(), taken.demands.end());
    }
    return all;
}

template <typename End> void RequirePiecesChangeNothing(const End& end, Input bytes, std::size_t piece) {
    const auto whole = TakeInPieces(end, bytes, std::max<std::size_t>(bytes.size(), 1));
    const auto pieces = TakeInPieces(end, bytes, piece);
    Require(whole.data == pieces.data && whole.demands == pieces.demands);
    // Both ends of RFC 2217 put what they ask behind the answers of the piece.
    if constexpr (std::is_same_v<End, telnet::Stream>) Require(whole.replies == pieces.replies);
    Require(whole.data.size() <= bytes.size());
}

/// Two ends that agree with each other, whatever either was told before, come to an end.
void RequireQuiet(Rfc2217Client client, Rfc2217Server server) {
    Bytes toServer = client.Begin();
    Bytes toClient = server.Begin();
    constexpr int enough = 20;
    for (int round = 0; !toServer.empty() || !toClient.empty(); ++round) {
        Require(round < enough);
        const Bytes heard = server.Take(toServer).replies;
        toServer = client.Take(toClient).replies;
        toClient = heard;
    }
}

} // namespace

void TakeTelnet(Input input) {
    if (input.empty()) return;
    const std::size_t piece = input.front() % 16U + 1U;
    const Input bytes = input.subspan(1);
    const telnet::Stream stream({telnet::Binary, telnet::ComPort}, {telnet::Binary, telnet::SuppressGoAhead});
    RequirePiecesChangeNothing(stream, bytes, piece);
    RequirePiecesChangeNothing(Rfc2217Client(9600), bytes, piece);
    RequirePiecesChangeNothing(Rfc2217Server(), bytes, piece);
    constexpr std::size_t settings = 44; // What the client sends once, as soon as it may.
    Require(TakeInPieces(Rfc2217Client(9600), bytes, piece).replies.size() <= bytes.size() + settings);
    Require(TakeInPieces(Rfc2217Server(), bytes, piece).replies.size() <= 12 * bytes.size());
    const Bytes escaped = telnet::Escaped(bytes);
    const Bytes payload(bytes.begin(), bytes.end());
    Require(TakeInPieces(Rfc2217Client(9600), escaped, piece).data == payload);
    Require(TakeInPieces(Rfc2217Server(), escaped, piece).data == payload);
    const telnet::Taken asked = TakeInPieces(stream, telnet::Demand(bytes), piece);
    Require(asked.data.empty() && asked.demands.size() == 1);
    constexpr std::size_t kept = 64;
    Require(std::ranges::equal(asked.demands.front(), bytes.first(std::min(bytes.size(), kept))));
    Rfc2217Client client(19200);
    Rfc2217Server server;
    static_cast<void>(client.Take(bytes));
    static_cast<void>(server.Take(bytes));
    RequireQuiet(client, server);
}

} // namespace vantrel::fuzz
