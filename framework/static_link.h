#pragma once

#include "framework/hyper_link.h"
#include "framework/static.h"
#include "platform/owners.h"

/// A static text that looks and behaves like a link on a page: underlined, blue, purple once it has been
/// followed, and opened by a click.
class CStaticLink : public CStatic {
public:
    /// @param target  an address as the shell takes it. Without one a click takes the string resource of the
    /// control's id, or else the control's own text.
    void SetTarget(const std::string& target) { m_link.SetTarget(target); }

protected:
    [[nodiscard]] std::span<const MessageRow> Messages() const override;

private:
    LRESULT OnNcHitTest(WPARAM, LPARAM);
    LRESULT OnColor(WPARAM context, LPARAM);
    LRESULT OnLButtonDown(WPARAM, LPARAM);
    LRESULT OnSetCursor(WPARAM, LPARAM);
    void FindTarget();
    void UnderlineText();

    CHyperLink m_link;
    COLORREF m_color = kUnvisited;
    CUniqueFont m_font;  // underlined; made when the text is drawn first

    static constexpr COLORREF kUnvisited = RGB(0, 0, 255);
    static constexpr COLORREF kVisited = RGB(128, 0, 128);
};
