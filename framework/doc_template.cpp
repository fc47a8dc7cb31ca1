#include "framework/doc_template.h"

#include "platform/text.h"

namespace {

/// The window title is the first part of the document string; the other parts are for file types we lack.
std::string WindowTitle(UINT resourceId) {
    const std::string parts = LoadText(resourceId);
    return parts.substr(0, parts.find('\n'));
}

}  // namespace

bool CSingleDocTemplate::OpenNewDocument() {
    m_document = m_makeDocument();
    m_frame = m_makeFrame();
    const std::string title = WindowTitle(m_resourceId);
    if (!m_frame->LoadFrame(m_resourceId, title, m_makeView())) {
        m_frame.reset();
        m_document.reset();
        return false;
    }
    m_document->SetTitle(title);
    m_frame->ShowTitle(title, m_document->GetTitle());
    m_frame->ActiveView()->OnInitialUpdate();
    return true;
}
