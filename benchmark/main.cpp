// Measures Vellumor against what its work costs at the least, and against the system's own tools, and writes
// the results as a table, json and a picture. Changes the registry that it runs on.

#define DOCTEST_CONFIG_IMPLEMENT
#include <windows.h>

#include <doctest/doctest.h>
#include <CLI/CLI.hpp>
#include <cstdio>
#include <fstream>
#include <set>

#include "benchmark/counts.h"
#include "benchmark/list_rows.h"
#include "benchmark/programs.h"
#include "benchmark/registry_maker.h"
#include "benchmark/report.h"
#include "benchmark/row_comparison.h"
#include "benchmark/series.h"
#include "benchmark/walks.h"
#include "framework/app.h"
#include "platform/program_folder.h"

namespace {

constexpr double kKeys = 100'000;
const std::vector<std::string> kGroups = {"growth", "scan",  "analysis", "export",
                                          "list",   "start", "counts",   "rows"};

struct Options {
    double scale = 1;
    int rounds = 3;
    std::vector<std::string> only;
    std::string json;
    std::string svg;
    std::string machine;
};

class CBench {
public:
    explicit CBench(const Options& options) : m_options(options) {
        m_report.machine = options.machine;
        m_report.scale = options.scale;
        m_report.rounds = options.rounds;
    }

    void Run() {
        MeasureGrowth();
        for (int round = 1; round <= m_options.rounds; ++round) {
            Tell("round " + std::to_string(round));
            if (IsWanted("scan")) MeasureScan();
            if (IsWanted("analysis")) MeasureAnalysis();
            if (IsWanted("export")) MeasureExport();
            if (IsWanted("list")) MeasureList();
            if (IsWanted("start")) Add("start", TimeStart());
        }
        if (IsWanted("list")) MeasureCleaning();
        if (IsWanted("rows")) Tell("Rows are equal: " + CompareRows());
        if (IsWanted("counts")) {
            m_report.counts = CountDeepScan();
            m_report.counts.merge(CountAnalysis());
        }
        for (const char* name : {"vellumor.exe", "vellumor-cli.exe"})
            Add(std::string(name) + "_bytes", static_cast<double>(FileSizeOf(ProgramFolder() + "\\" + name)));
        AddRatios();
    }

    [[nodiscard]] const Report& Result() const { return m_report; }

private:
    [[nodiscard]] bool IsWanted(const std::string& group) const {
        return m_options.only.empty() ||
               std::find(m_options.only.begin(), m_options.only.end(), group) != m_options.only.end();
    }

    static void Tell(const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); }

    void Add(const std::string& name, double value) {
        m_report.measurements[name].values.push_back(value);
        std::fprintf(stderr, "  %s %.6f\n", name.c_str(), value);
    }

    /// Makes the registry, in steps where the growth is measured.
    void MeasureGrowth() {
        const auto keys = static_cast<std::size_t>(kKeys * m_options.scale);
        std::size_t made = 0;
        for (const int part : {16, 4, 1}) {
            if (!IsWanted("growth") && part != 1) continue;
            const std::size_t size = keys / static_cast<std::size_t>(part);
            Tell("making " + std::to_string(size) + " keys");
            MakeRegistry(made, size);
            made = size;
            if (IsWanted("growth") && HasConsole()) MeasureOneSize(16 / part);
        }
    }

    void MeasureOneSize(int times) {
        const std::string name = std::to_string(times) + "x";
        const TreeSize size = CountHives();
        for (int round = 0; round < m_options.rounds; ++round) {
            const AnalysisCost cost = TimeAnalysisInConsole();
            Add("growth_value_" + name, cost.seconds / static_cast<double>(size.values));
            Add("growth_memory_" + name + "_bytes", static_cast<double>(cost.peakMemory));
        }
    }

    void MeasureScan() {
        Add("bare_walk", TimeBareWalk());
        Add("walk_with_sends", TimeWalkWithSends());
        Add("deep_scan", TimeDeepScan());
    }

    void MeasureAnalysis() {
        Add("reg_query", TimeRegQuery());
        Add("hives_with_sends", TimeHivesWithSends());
        const AnalysisCost window = TimeAnalysisInWindow();
        Add("analysis_in_window", window.seconds);
        Add("window_memory_bytes", static_cast<double>(window.peakMemory));
        if (!HasConsole()) return Tell("the program for scripts is not built");
        const AnalysisCost console = TimeAnalysisInConsole();
        Add("analysis_in_console", console.seconds);
        Add("console_memory_bytes", static_cast<double>(console.peakMemory));
    }

    void MeasureExport() {
        Add("export", TimeExport());
        const ExportCost regedit = TimeRegeditExport();
        Add("regedit_export", regedit.withoutStart);
        Add("regedit_command", regedit.command);
        Add("reg_export", TimeRegExport().withoutStart);
    }

    void MeasureList() {
        for (const std::size_t count : {1'000U, 10'000U, 100'000U}) {
            const RowCosts costs = TimeRows(count);
            Add("row_add_" + std::to_string(count), costs.add);
            Add("row_check_all_" + std::to_string(count), costs.checkAll);
            Add("row_uncheck_" + std::to_string(count), costs.uncheck);
        }
    }

    /// Once only: what a row costs here is registry calls above all, whose number is not small.
    void MeasureCleaning() {
        for (const std::size_t count : {1'000U, 10'000U, 100'000U})
            if (static_cast<double>(count) <= kKeys * m_options.scale)
                Add("row_clean_" + std::to_string(count), TimeCleaning(count));
    }

    void AddRatios() {
        Report& report = m_report;
        AddRatio(report, "scan_to_bare_walk", "deep scan / the same enumeration calls alone", "deep_scan",
                 "bare_walk", {});
        AddRatio(report, "scan_to_walk_and_send", "deep scan / enumeration, an event test and a send a value",
                 "deep_scan", "walk_with_sends", 1.15);
        AddRatio(report, "analysis_to_reg_query", "analysis in the window / reg query /s of the three hives",
                 "analysis_in_window", "reg_query", 1.5);
        AddRatio(report, "hives_with_sends_to_reg_query",
                 "the walk and sends of its first three stages alone", "hives_with_sends", "reg_query", {});
        AddRatio(report, "analysis_to_hives_with_sends", "analysis in the window / that walk",
                 "analysis_in_window", "hives_with_sends", {});
        AddRatio(report, "console_to_reg_query", "analysis in the console / reg query /s of the three hives",
                 "analysis_in_console", "reg_query", {});
        AddRatio(report, "window_to_console", "analysis in the window / in the console", "analysis_in_window",
                 "analysis_in_console", {});
        AddRatio(report, "export_to_regedit", "export / regedit /e of the same key", "export",
                 "regedit_export", 0.7);
        AddRatio(report, "export_to_regedit_command", "export / the whole command, its start included",
                 "export", "regedit_command", {});
        AddRatio(report, "export_to_reg_export", "export / reg export of the same key", "export",
                 "reg_export", {});
        AddRatio(report, "row_cost_100k_to_1k", "adding a row to 100,000 / to 1,000", "row_add_100000",
                 "row_add_1000", 1.2);
        AddRatio(report, "row_check_100k_to_1k", "checking a row of 100,000 / of 1,000",
                 "row_check_all_100000", "row_check_all_1000", {});
        AddRatio(report, "row_uncheck_100k_to_1k", "unchecking a row of 100,000 / of 1,000",
                 "row_uncheck_100000", "row_uncheck_1000", {});
        AddRatio(report, "row_clean_10k_to_1k", "cleaning a row of 10,000 / of 1,000", "row_clean_10000",
                 "row_clean_1000", {});
        AddRatio(report, "row_clean_100k_to_1k", "cleaning a row of 100,000 / of 1,000", "row_clean_100000",
                 "row_clean_1000", {});
        AddRatio(report, "value_cost_4x_to_1x", "analysis of a value, registry four times as large",
                 "growth_value_4x", "growth_value_1x", {});
        AddRatio(report, "value_cost_16x_to_1x", "analysis of a value, registry sixteen times as large",
                 "growth_value_16x", "growth_value_1x", {});
        AddRatio(report, "memory_16x_to_1x", "peak memory, registry sixteen times as large",
                 "growth_memory_16x_bytes", "growth_memory_1x_bytes", {});
    }

    const Options& m_options;
    Report m_report;
};

bool WriteText(const std::string& path, const std::string& text) {
    if (path.empty()) return true;
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    return file.good();
}

int RunBench(const Options& options) {
    CBench bench(options);
    bench.Run();
    std::fputs(AsTable(bench.Result()).c_str(), stdout);
    const bool isWritten =
        WriteText(options.json, AsJson(bench.Result())) && WriteText(options.svg, AsSvg(bench.Result()));
    return isWritten ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app("Measures Vellumor");
    app.add_option("--scale", options.scale, "1 stands for 100,000 keys")->check(CLI::Range(0.001, 16.0));
    app.add_option("--rounds", options.rounds, "How often each is measured")->check(CLI::Range(1, 100));
    app.add_option("--only", options.only, "Groups")->delimiter(',')->check(CLI::IsMember(kGroups));
    app.add_option("--json", options.json);
    app.add_option("--svg", options.svg);
    app.add_option("--machine", options.machine);
    try {
        app.parse(argc, argv);
        return RunBench(options);
    } catch (const CLI::ParseError& error) {
        return app.exit(error);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "the bench failed: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
