#include "analysis/report.h"

#include <windows.h>

#include <optional>
#include <string>

#include "analysis/channel.h"
#include "registry/file_reference.h"
#include "registry/key_path.h"

AnalysisChannel g_analysisChannel;
AnalysisContext g_analysisContext;

namespace {

void SendToView(AnalysisMessage message) { ::SendMessageA(g_analysisChannel.hViewWnd, message, 0, 0); }

}  // namespace

void PollCancel() {
    if (::WaitForSingleObject(g_analysisChannel.hCancelEvent, 0) != WAIT_OBJECT_0) return;
    SendToView(WM_ANALYZE_CANCELED);
    throw CAnalysisCanceled();
}

void ReportProgress(const char* keyPath) {
    g_analysisChannel.pszCurrentKey = keyPath;
    SendToView(WM_ANALYZE_PROGRESS);
    g_analysisChannel.pszCurrentKey = nullptr;
}

void ReportRow(const char* keyPath, const char* writeTime, const char* valueName, const char* dataReference,
               Reason reason) {
    g_analysisChannel.pszInvalidKey = keyPath;
    g_analysisChannel.pszValueName = valueName;
    g_analysisChannel.pszDataReference = dataReference;
    g_analysisChannel.pszWriteTime = writeTime;
    g_analysisContext.pszReason = reason.text;
    SendToView(WM_ANALYZE_ROW);
    // The texts are about to go out of scope.
    g_analysisChannel.pszInvalidKey = nullptr;
    g_analysisChannel.pszValueName = nullptr;
    g_analysisChannel.pszDataReference = nullptr;
    g_analysisChannel.pszWriteTime = nullptr;
    g_analysisContext.pszReason = nullptr;
}

void ReportIfFileMissing(const char* keyPath, const char* valueName, const char* path) {
    if (keyPath == nullptr || !FileReferenceIsMissing(path)) return;
    const std::optional<std::string> writeTime = FormatWriteTime(keyPath);
    if (writeTime) ReportRow(keyPath, writeTime->c_str(), valueName, path, reasons::kFileMissing);
}
