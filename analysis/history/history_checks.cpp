#include "analysis/history/history_checks.h"

#include <string>

#include "analysis/check_walk.h"
#include "analysis/history/user_assist_rules.h"
#include "registry/key_tree.h"

namespace {

enum class Filter { NamedValues, Texts, NamedTexts };
enum class Column { Empty, Text };

/// A history kept as the values of one key.
struct HistoryList {
    CheckArea area;
    Filter filter;
    Column data;
};

const HistoryList kTypedUrls{AreaAt(R"(\HKEY_CURRENT_USER\Software\Microsoft\Internet Explorer\TypedURLs)"),
                             Filter::Texts, Column::Text};
const HistoryList kLastVisitedMru{
    AreaAt(
        R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\ComDlg32\LastVisitedMRU)"),
    Filter::NamedValues, Column::Empty};
const HistoryList kOpenSaveMru{
    AreaAt(R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\ComDlg32\OpenSaveMRU)"),
    Filter::NamedTexts, Column::Text};
const HistoryList kRecentDocs{
    AreaAt(R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\RecentDocs)"),
    Filter::NamedValues, Column::Empty};
const HistoryList kRunMru{
    AreaAt(R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\RunMRU)"),
    Filter::NamedValues, Column::Empty};
const HistoryList kStreamMru{
    AreaAt(R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\StreamMRU)"),
    Filter::NamedValues, Column::Empty};
const HistoryList kWallpaperMru{
    AreaAt(R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\Wallpaper\MRU)"),
    Filter::NamedValues, Column::Empty};

const CheckArea kUsageCounters[] = {
    AreaAt(
        R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\UserAssist\{75048700-EF1F-11D0-9888-006097DEACF9}\Count)"),
    AreaAt(
        R"(\HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Explorer\UserAssist\{5E6AB780-7743-11CF-A12B-00AA004AE837}\Count)"),
};

constexpr DWORD kRecentNameBytes = 100;
constexpr int kMostRereadings = 1000;

bool Passes(Filter filter, const CValueReader& value) {
    switch (filter) {
        case Filter::NamedValues:
            return value.HasName();
        case Filter::Texts:
            return value.Type() == REG_SZ;
        case Filter::NamedTexts:
            return value.Type() == REG_SZ && value.HasName();
    }
    return false;
}

void ReportHistory(const HistoryList& list) {
    // Where the data are not shown they are not read either, so that their size does not matter.
    const DWORD dataBytes = list.data == Column::Text ? kValueDataBytes : kNamesOnly;
    ForEachValue(list.area, {kValueNameBytes, dataBytes}, [&list](const CValueReader& value) {
        if (Passes(list.filter, value))
            ReportUntimed(reasons::kHistory, list.area.path, value.Name(), value.Data());
    });
}

void ReportOpenedFiles(const Subkey& entry) {
    const CUniqueKey key = OpenForAll(entry.parent, entry.name);
    if (!key) return;
    CValueReader value(kValueNameBytes, kValueDataBytes);
    CWalkEnd end(CWalkEnd::Of::Values);
    DWORD index = 0;
    for (int rereadings = 0; rereadings <= kMostRereadings;) {
        PollCancel();
        const LSTATUS result = value.Read(key.Get(), index);
        if (end.IsReached(key.Get(), index, result)) return;
        if (result == ERROR_SUCCESS && !value.HasName()) {
            // Deliberate: the default value does not advance this walk, and what lies behind it is not
            // reported.
            ++rereadings;
            continue;
        }
        if (result == ERROR_SUCCESS)
            entry.Report(reasons::kHistory, value.Name(), value.Type() == REG_SZ ? value.Data() : "");
        ++index;
        rereadings = 0;
    }
}

void ReportRecentDocuments(const Subkey& entry) {
    const CUniqueKey key = OpenForAll(entry.parent, entry.name);
    if (!key) return;
    if (KeyTreeIsEmpty(key.Get(), entry.path, &PollCancel)) entry.Report(reasons::kNothingInTree);
    if (!HasNoSubkeys(key.Get())) return;
    ForEachValueOf(key.Get(), {kRecentNameBytes, kNamesOnly}, [&entry](const CValueReader& value) {
        if (value.HasName()) entry.Report(reasons::kHistory, value.Name());
    });
}

}  // namespace

void CheckTypedUrls() { ReportHistory(kTypedUrls); }
void CheckLastVisitedMru() { ReportHistory(kLastVisitedMru); }
void CheckRecentDocs() { ReportHistory(kRecentDocs); }
void CheckRunMru() { ReportHistory(kRunMru); }
void CheckStreamMru() { ReportHistory(kStreamMru); }
void CheckWallpaperMru() { ReportHistory(kWallpaperMru); }

void CheckOpenSaveMru() {
    ReportHistory(kOpenSaveMru);
    ForEachSubkey(kOpenSaveMru.area, &ReportOpenedFiles);
}

void CheckRecentDocsByType() { ForEachSubkey(kRecentDocs.area, &ReportRecentDocuments); }

void CheckUserAssist() {
    for (const CheckArea& area : kUsageCounters)
        ForEachValue(area, {kValueNameBytes, kNamesOnly}, [&area](const CValueReader& value) {
            ReportUntimed(reasons::kUsageCounter, area.path, value.Name(),
                          DecodeUsageName(value.Name()).c_str());
        });
}
