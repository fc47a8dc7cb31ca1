#include "analysis/check.h"

#include <algorithm>

#include "analysis/category_driver.h"
#include "analysis/channel.h"
#include "analysis/stages.h"

void RunCheck(const Check& check) {
    const CCheckChoice* choice = g_analysisContext.pCheckChoice;
    if (choice != nullptr && !choice->Includes(check.name)) return;
    g_analysisContext.pszCheck = check.name;
    check.run();
}

std::vector<Check> AllChecks() {
    std::vector<Check> checks;
    const auto add = [&checks](const Check& check) {
        const auto isSame = [&check](const Check& other) { return other.run == check.run; };
        if (std::ranges::none_of(checks, isSame)) checks.push_back(check);
    };
    for (const AnalysisStage& stage : AnalysisStages())
        if (stage.check != nullptr) add(*stage.check);
    for (const Check& check : CategoryChecks()) add(check);
    return checks;
}
