#pragma once

#include "framework/document.h"

/// The document of the frame. It holds nothing: the rows live in the list alone.
class CVellumorDoc : public CDocument {
public:
    /// Deliberate: whatever title it is given, the document keeps its own. The caption does not show it.
    void SetTitle(const std::string&) override { CDocument::SetTitle("Vellumor v4.40"); }
};
