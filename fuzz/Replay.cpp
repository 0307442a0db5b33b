// Every input of the corpora once, with whatever compiler there is: what was found once stays found. The only argument
// is the folder of the corpora.
#include "fuzz/FuzzTargets.h"
#include "tests/support/TemporaryFolder.h"

#include <iostream>

using namespace vantrel;

int main(int count, char** arguments) {
    if (count != 2) return 2;
    int taken = 0;
    for (const fuzz::Target& target : fuzz::Targets) {
        const int before = taken;
        for (const auto& entry :
             std::filesystem::directory_iterator(std::filesystem::path(arguments[1]) / target.name)) {
            const std::string text = FileText(entry.path());
            std::cout << target.name << ' ' << entry.path().filename().string() << std::endl; // Seen when it falls.
            target.take(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
            ++taken;
        }
        if (taken == before) return std::cerr << "no inputs for " << target.name << '\n', 1;
    }
    std::cout << taken << " inputs taken\n";
    return 0;
}
