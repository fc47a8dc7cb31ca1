#include <doctest/doctest.h>

#include <sstream>
#include <string>

#include "console/row_formats.h"
#include "tests/driver/wait.h"
#include "tests/e2e/program.h"
#include "tests/hostile/disturbance.h"
#include "tests/hostile/explained.h"
#include "tests/hostile/host_program.h"
#include "tests/hostile/hostile_registry.h"
#include "tests/hostile/not_returned.h"
#include "tests/hostile/picture.h"

namespace {

constexpr int kRounds = 3;

/// This program once more, as the one that disturbs.
class CDisturber {
public:
    CDisturber() { WaitForRound(); }

    /// Waits until all lists have been disturbed once more. @throws CDriverError where nobody does that now.
    void WaitForRound() const {
        ::ResetEvent(m_disturbed.Get());
        // The first may have been under way for long.
        for (int round = 0; round < 2; ++round)
            if (::WaitForSingleObject(m_disturbed.Get(), kPatience) != WAIT_OBJECT_0)
                FailWaiting("the disturbing program", kPatience);
    }

private:
    CUniqueHandle m_disturbed{::CreateEventA(nullptr, FALSE, FALSE, kDisturbedEvent)};
    CConsoleProgram m_program{{TestFolder() + "\\hostile_tests.exe", kDisturb}};
};

/// Checks that a cleaning came to its end and told of each row what became of it.
/// @return the name of its undo file.
std::string CheckCleaned(const ConsoleResult& cleaned) {
    CHECK((cleaned.exitCode == 0 || cleaned.exitCode == 3));
    CHECK((cleaned.exitCode == 3) == (cleaned.error.find("not cleaned: ") != std::string::npos));
    std::istringstream output(cleaned.output);
    int changes = 0;
    std::string line;
    while (std::getline(output, line) && !line.starts_with("Undo file: "))
        if (!line.starts_with("nothing: ") && line.find(kMark) != std::string::npos) ++changes;
    MESSAGE(changes, " disturbed entries cleaned");
    CHECK(changes > 5);
    CHECK(line.starts_with("Undo file: "));
    line.erase(line.find_last_not_of("\r\n") + 1);
    return line.substr(line.rfind('\\') + 1);
}

void CheckReplayed(const CHostProgram& program, const std::string& undoFile) {
    const ConsoleResult replayed = program.Run("undo replay " + undoFile);
    CHECK(replayed.exitCode == 0);
    CHECK(replayed.error.empty());
}

}  // namespace

TEST_CASE("keys and values that come, go and change while they are read do no harm") {
    const CHostProgram program;
    CHostileRegistry registry;
    registry.OpenAreas();
    const Picture before = TakeRegistryPicture();
    {
        const CDisturber disturber;
        std::size_t found = 0;
        for (int round = 0; round < kRounds; ++round) found += program.Analyze("").size();
        MESSAGE(found, " rows in ", kRounds, " disturbed analyses");
        CHECK(found > 100);
        disturber.WaitForRound();
    }
    registry.Remove();
    for (const Change& change : Changes(before, TakeRegistryPicture()))
        FAIL_CHECK("not the disturbing program's: " << Describe(change));
}

TEST_CASE(
    "keys and values that come, go and change while they are cleaned and replayed take no others along") {
    const CHostProgram program;
    CHostileRegistry registry;
    registry.OpenAreas();
    const Picture before = TakeRegistryPicture();
    const auto own = ReadRows(program.Run("analyze --format json").output);
    REQUIRE(std::holds_alternative<std::vector<Row>>(own));
    const CExplained explained(std::get<std::vector<Row>>(own));
    {
        const CDisturber disturber;
        const std::string rows = WriteRows(program.Analyze(""), RowFormat::Json, true);
        const std::string named = CheckCleaned(program.Run("clean --rows - --yes", rows));
        const std::string all = CheckCleaned(program.Run("clean --all --yes"));
        CheckReplayed(program, named);
        CheckReplayed(program, all);
        disturber.WaitForRound();
    }
    registry.Remove();
    const CNotReturned notReturned(before);
    for (const Change& change : Changes(before, TakeRegistryPicture()))
        if (!explained.Holds(change) || !notReturned.ReasonFor(change).has_value())
            FAIL_CHECK("not the disturbing program's: " << Describe(change));
}
