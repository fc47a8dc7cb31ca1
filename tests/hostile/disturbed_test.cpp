#include <doctest/doctest.h>

#include "tests/e2e/program.h"
#include "tests/hostile/disturbance.h"
#include "tests/hostile/host_program.h"
#include "tests/hostile/hostile_registry.h"
#include "tests/hostile/picture.h"

namespace {

constexpr char kAllButMachine[] = "--skip dead-files-of-the-machine";
constexpr int kRounds = 3;

/// This program once more, as the one that disturbs.
ConsoleStart Disturber() { return {TestFolder() + "\\hostile_tests.exe", kDisturb}; }

}  // namespace

TEST_CASE("keys and values that come, go and change while they are read do no harm") {
    const CHostProgram program;
    CHostileRegistry registry;
    registry.OpenAreas();
    const Picture before = TakeRegistryPicture();
    {
        const CConsoleProgram disturber(Disturber());
        std::size_t found = 0;
        for (int round = 0; round < kRounds; ++round) {
            found += program.Analyze(kAllButMachine).size();
        }
        MESSAGE(found, " rows in ", kRounds, " disturbed analyses");
        CHECK(found > 100);
    }
    registry.Remove();
    for (const Change& change : Changes(before, TakeRegistryPicture()))
        FAIL_CHECK("not the disturbing program's: " << Describe(change));
}
