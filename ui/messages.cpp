#include "ui/messages.h"

#include "platform/host_services.h"
#include "platform/text.h"
#include "resources/resource.h"

void ShowMessage(HWND owner, const std::string& text, UINT icon) {
    SystemActions().ShowMessage(owner, text.c_str(), LoadText(IDS_APP_TITLE).c_str(), MB_OK | icon);
}

bool AskYesNo(HWND owner, const std::string& question) {
    return SystemActions().ShowMessage(owner, question.c_str(), LoadText(IDS_APP_TITLE).c_str(),
                                       MB_YESNO | MB_ICONQUESTION) == IDYES;
}
