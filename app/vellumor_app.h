#pragma once

#include "framework/app.h"

/// The program: one document template, one main window.
class CVellumorApp : public CWinApp {
public:
    [[nodiscard]] bool InitInstance() override;
};
