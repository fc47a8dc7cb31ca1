#pragma once

#include <string>

#include "framework/dialog.h"

/// The progress dialog of an analysis: the key under examination, the last key reported, a busy bar, Cancel.
class CDlgAnalyze : public CDialog {
public:
    CDlgAnalyze();

    /// Brings the changed texts into their controls, but not more often than a person can read: a control
    /// refreshed for each of a million values would take most of the time of the analysis. The timer brings
    /// what is left over.
    void RefreshSoon();
    /// Whether RefreshSoon would touch the controls now.
    [[nodiscard]] bool IsRefreshDue() const;
    /// Brings the changed texts into their controls at once.
    void Refresh();

    // The handlers of the analysis write these directly, from the user-interface thread only.
    int m_bFinishing = 0;  // 1: the analysis is over, and the next tick ends the dialog
    int m_nRange;          // the bar's range, from 0
    int m_bStarted = 0;
    UINT_PTR m_nTimer = 0;
    std::string m_strLastKey;
    std::string m_strCurrentKey;

protected:
    [[nodiscard]] bool OnInitDialog() override;
    void OnCancel() override;
    [[nodiscard]] std::span<const MessageRow> Messages() const override;

private:
    LRESULT OnTimer(WPARAM, LPARAM);
    LRESULT OnClose(WPARAM, LPARAM);
    void FillBar(HWND bar);

    std::string m_shownLastKey;
    std::string m_shownCurrentKey;
    DWORD m_refreshedAt = 0;  // milliseconds of the system's tick count
};
