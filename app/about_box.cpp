#include "app/about_box.h"

#include "app/commit.h"
#include "platform/text.h"
#include "resources/resource.h"

namespace {

constexpr const char* kArchitecture = sizeof(void*) == 4 ? "x86" : "x64";

}  // namespace

std::string VersionLine() {
    return LoadText(IDS_APP_TITLE) + " (" + kArchitecture + ", built from " + SourceCommit() + ")";
}

CAboutDlg::CAboutDlg() : CDialog(IDD_ABOUT) {}

bool CAboutDlg::OnInitDialog() {
    SetDlgItemText(IDC_ABOUT_VERSION, VersionLine());
    const std::string webPage = LoadText(IDC_WEB_LINK);
    const std::string supportAddress = LoadText(IDC_MAIL_LINK);
    SetDlgItemText(IDC_WEB_LINK, webPage);
    SetDlgItemText(IDC_MAIL_LINK, supportAddress);
    m_webLink.SetTarget(webPage);
    m_mailLink.SetTarget("mailto:" + supportAddress);
    m_webLink.SubclassWindow(GetDlgItem(IDC_WEB_LINK));
    m_mailLink.SubclassWindow(GetDlgItem(IDC_MAIL_LINK));
    return true;
}
