#pragma once

#include "framework/dialog.h"
#include "framework/static_link.h"

/// What the program is, which build of it, and where to turn to.
class CAboutDlg : public CDialog {
public:
    CAboutDlg();

protected:
    [[nodiscard]] bool OnInitDialog() override;

private:
    CStaticLink m_webLink;
    CStaticLink m_mailLink;
};
