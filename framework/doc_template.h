#pragma once

#include <memory>

#include "framework/document.h"
#include "framework/frame_wnd.h"

/// Makes one document with its frame and view, all sharing one resource id (menu, icon, title, toolbar).
class CSingleDocTemplate {
public:
    using DocumentMaker = std::unique_ptr<CDocument> (*)();
    using FrameMaker = std::unique_ptr<CFrameWnd> (*)();
    using ViewMaker = std::unique_ptr<CView> (*)();

    CSingleDocTemplate(UINT resourceId, DocumentMaker document, FrameMaker frame, ViewMaker view)
        : m_resourceId(resourceId), m_makeDocument(document), m_makeFrame(frame), m_makeView(view) {}

    /// Creates document, frame and view, then runs the view's initial update; the frame is not shown yet.
    /// @return false when the frame or its view cannot be created; nothing is left behind then.
    [[nodiscard]] bool OpenNewDocument();

    [[nodiscard]] CDocument* Document() const { return m_document.get(); }
    [[nodiscard]] CFrameWnd* Frame() const { return m_frame.get(); }

private:
    UINT m_resourceId;
    DocumentMaker m_makeDocument;
    FrameMaker m_makeFrame;
    ViewMaker m_makeView;
    std::unique_ptr<CDocument> m_document;
    std::unique_ptr<CFrameWnd> m_frame;
};

template <class Base, class Derived>
std::unique_ptr<Base> MakeRuntime() {
    return std::make_unique<Derived>();
}
