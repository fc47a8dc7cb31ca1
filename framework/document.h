#pragma once

#include <string>

/// What a frame shows. Here it carries the title alone.
class CDocument {
public:
    CDocument() = default;
    CDocument(const CDocument&) = delete;
    CDocument& operator=(const CDocument&) = delete;
    virtual ~CDocument() = default;

    [[nodiscard]] const std::string& GetTitle() const { return m_title; }
    virtual void SetTitle(const std::string& title) { m_title = title; }

private:
    std::string m_title;
};
