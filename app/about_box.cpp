#include "app/about_box.h"

#include "platform/text.h"
#include "platform/version.h"
#include "resources/resource.h"

CAboutDlg::CAboutDlg() : CDialog(IDD_ABOUT) {}

bool CAboutDlg::OnInitDialog() {
    SetDlgItemText(IDC_ABOUT_VERSION, VersionLine(LoadText(IDS_APP_TITLE)));
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
