// Why there is no link, as the console says it, and where a board is not served.
#include "tests/console/ConsoleFixture.h"

namespace vantrel {
namespace {

TEST_F(ConsoleTest, TheDoctorTellsAHealthyLineAndGivesItsFiguresToOtherPrograms) {
    Expect(0, "doctor --port simulated", {"55 came back", "200 exchanges went without a flaw"});
    Expect(0, "doctor --port simulated --json",
           {"\"exchanges\": 200", "\"lost\": 0", "\"medianMs\":", "\"p99Ms\":", "\"board\":"});
}

TEST_F(ConsoleTest, TheDoctorEndsWithTheCodeOfAFailedLinkAtTheWrongSpeed) {
    boardSpeed = 19200;
    Expect(3, "doctor --port simulated --speed 9600", {"answers at 19200 baud; the program is set to 9600."});
    Expect(0, "doctor --port simulated --speed 19200");
}

TEST_F(ConsoleTest, ABoardIsNotServedWhereTheAddressIsNone) {
    for (const char* address : {"127.0.0.1:0x1", "127.0.0.1:70000", "rfc2217://127.0.0.1", "plant:"})
        Expect(2, std::string("simulate --listen ") + address, {"write HOST:PORT, PORT alone for this computer only"});
    Expect(2, "simulate --listen 4001 --link @board", {"--link is for a device; with --listen there is none."});
}

} // namespace
} // namespace vantrel
