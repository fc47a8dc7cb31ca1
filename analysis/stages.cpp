#include "analysis/stages.h"

#include <array>
#include <cstddef>
#include <utility>

#include "analysis/category_driver.h"
#include "analysis/com/com_checks.h"
#include "analysis/deep_scan.h"
#include "analysis/report.h"

namespace {

struct StageWork {
    const char* area;
    void (*work)();
};

constexpr StageWork kWork[] = {
    {"HKEY_LOCAL_MACHINE, dead file references", &ScanLocalMachine},
    {"HKEY_CURRENT_USER, dead file references", &ScanCurrentUser},
    {"HKEY_USERS, dead file references", &ScanUsers},
    {"CLSID, subkeys of every class", &CheckClassSubkeys},
    {"CLSID, program and application links of every class", &CheckClassLinks},
    {"TypeLib", &CheckTypeLibraries},
    {"HKEY_CLASSES_ROOT, top-level keys and their class links", &CheckClassesRootKeys},
    {"CLSID, type library link of every class", &CheckClassTypeLibLinks},
    {"Interface", &CheckInterfaces},
    {"Category checks", &RunCategoryChecks},
};
constexpr std::size_t kStageCount = std::size(kWork);
static_assert(WM_STAGE1_DONE + kStageCount - 1 == WM_ANALYZE_DONE);

constexpr AnalysisMessage DoneMessage(std::size_t index) {
    return static_cast<AnalysisMessage>(WM_STAGE1_DONE + index);
}

template <std::size_t Index>
UINT RunStage(void*) {
    try {
        kWork[Index].work();
    } catch (const CAnalysisCanceled&) {
        return 0;  // the view knows already; without a done message no later stage starts
    }
    ::PostMessageA(g_analysisChannel.hViewWnd, DoneMessage(Index), 0, 0);
    return 0;
}

template <std::size_t... Index>
constexpr auto MakeStages(std::index_sequence<Index...>) {
    return std::array<AnalysisStage, sizeof...(Index)>{
        AnalysisStage{kWork[Index].area, kWork[Index].work, DoneMessage(Index), &RunStage<Index>}...};
}

constexpr auto kStages = MakeStages(std::make_index_sequence<kStageCount>());

}  // namespace

std::span<const AnalysisStage> AnalysisStages() { return kStages; }
