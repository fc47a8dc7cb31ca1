#include <doctest/doctest.h>

#include <cmath>
#include <optional>
#include <random>

#include "platform/owners.h"
#include "tests/driver/process_info.h"
#include "tests/driver/wait.h"
#include "tests/e2e/rule_plants.h"
#include "tests/e2e/whole_registry.h"
#include "tests/load/load_bench.h"
#include "tests/support/scratch_key.h"

namespace {

constexpr std::size_t kHeapSlack = 256 * 1024;  // what the system's own libraries keep of a long run

/// Waits until the thread of the analysis before has ended.
Resources SettledResources(std::size_t threads = ThreadsOf(::GetCurrentProcessId()).size()) {
    WaitFor("the worker to end", [&] {
        PumpMessages();
        return ThreadsOf(::GetCurrentProcessId()).size() <= threads;
    });
    return Resources::OfThisProcess();
}

/// Checks the rows of what was planted.
int CheckOurRows(const CLoadBench& bench) {
    int count = 0;
    for (int row = 0; row < bench.Rows(); ++row)
        if (IsOurs(bench.RowAt(row))) {
            bench.Check(row);
            ++count;
        }
    return count;
}

constexpr int kValuesPerKey = 10;

void FillWithDeadValues(CScratchKey& scratch, int count) {
    CUniqueKey key;
    for (int row = 0; row < count; ++row) {
        if (row % kValuesPerKey == 0) {
            const std::string name = std::to_string(row / 1000) + "\\" + std::to_string(row / kValuesPerKey);
            REQUIRE(::RegCreateKeyA(scratch.Get(), name.c_str(), key.Receive()) == ERROR_SUCCESS);
        }
        SetText(key.Get(), "value" + std::to_string(row % kValuesPerKey),
                "C:\\" + std::string(kMark) + "\\file" + std::to_string(row) + ".dll");
    }
}

/// Milliseconds until a Cancel, early ones as likely as late ones ten times as long: most of what an analysis
/// makes it makes at its start.
class CRandomMoments {
public:
    explicit CRandomMoments(DWORD longest) : m_exponent(0, std::log(longest)) {}
    UINT Next() { return static_cast<UINT>(std::exp(m_exponent(m_source))); }

private:
    std::mt19937 m_source{20090514};
    std::uniform_real_distribution<double> m_exponent;
};

}  // namespace

TEST_CASE(
    "analyses that are started and cancelled at random moments change nothing and leave nothing behind") {
    const CRulePlants plants;
    const Tree planted = ReadRegistry();
    CLoadBench bench;
    const DWORD begin = ::GetTickCount();
    const std::string whole = bench.Analyze();
    const int rows = bench.Rows();
    CRandomMoments moments((::GetTickCount() - begin) / 2);
    for (int warmUp = 0; warmUp < 10; ++warmUp) (void)bench.Analyze(moments.Next());
    bench.Clear();
    const Resources before = SettledResources();

    const int count = LoadOf(1000);
    int cancelled = 0;
    for (int round = 0; round < count; ++round) {
        const std::string message = bench.Analyze(moments.Next());
        if (message.starts_with("Registry analyzing canceled"))
            ++cancelled;
        else
            CHECK(message == whole);
        CHECK(bench.Rows() <= rows);
    }
    CHECK(cancelled > count / 2);
    bench.Clear();
    const Resources after = SettledResources(before.threads);
    MESSAGE(cancelled << " of " << count << " analyses cancelled; before: " << before.Text()
                      << "; after: " << after.Text());
    CheckFlat(before, after, kHeapSlack);
    CHECK(bench.Analyze() == whole);  // and the next one finds what the first one found
    CHECK(Difference(planted, ReadRegistry()) == "");
}

TEST_CASE("very many rows are shown, cleaned and undone, and take no memory once they are gone" *
          doctest::test_suite("smoke")) {
    CLoadBench bench;
    CScratchKey scratch(HKEY_LOCAL_MACHINE);
    const int count = LoadOf(100'000);
    FillWithDeadValues(scratch, 1000);
    (void)bench.Analyze();
    bench.Clear();
    const Resources before = SettledResources();

    FillWithDeadValues(scratch, count);
    const Tree filled = ReadTree(scratch.Get());
    (void)bench.Analyze();
    REQUIRE(bench.Rows() >= count);
    CHECK(CheckOurRows(bench) == count);
    CHECK(bench.Clean() ==
          std::to_string(count) + " selected invalid registry entries cleaned successfully.");
    (void)bench.Analyze();
    CHECK(CheckOurRows(bench) == 0);
    REQUIRE(Difference(filled, ReadTree(scratch.Get())) != "");
    CHECK(bench.UndoAll().ends_with("recovered successfully."));
    CHECK(Difference(filled, ReadTree(scratch.Get())) == "");
    bench.DeleteUndoFiles();
    bench.Clear();
    const Resources after = SettledResources(before.threads);
    MESSAGE(count << " rows; before: " << before.Text() << "; after: " << after.Text());
    CheckFlat(before, after, kHeapSlack);
}

TEST_CASE("cleaning and undoing again and again leaves the registry as it was, and nothing behind") {
    const CRulePlants plants;
    const Tree planted = ReadRegistry();
    CLoadBench bench;
    std::optional<Resources> before;
    const int count = LoadOf(50);
    constexpr int kWarmUp = 1;
    for (int cycle = 0; cycle < kWarmUp + count; ++cycle) {
        CAPTURE(cycle);
        if (cycle == kWarmUp) before = SettledResources();
        (void)bench.Analyze();
        const int checked = CheckOurRows(bench);
        REQUIRE(checked > 100);
        CHECK(bench.Clean().starts_with(std::to_string(checked)));
        REQUIRE(Difference(planted, ReadRegistry()) != "");
        CHECK(bench.UndoAll().ends_with("recovered successfully."));
        CHECK(Difference(planted, ReadRegistry()) == "");
        bench.DeleteUndoFiles();
        bench.Clear();
    }
    const Resources after = SettledResources(before->threads);
    MESSAGE(count << " cycles; before: " << before->Text() << "; after: " << after.Text());
    CheckFlat(*before, after, kHeapSlack);
}
