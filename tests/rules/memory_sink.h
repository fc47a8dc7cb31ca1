#pragma once

#include <string>
#include <vector>

#include "repair/export_text_rules.h"

/// Keeps what an export writes, block by block; can be told to refuse.
class CMemorySink : public CByteSink {
public:
    [[nodiscard]] bool Write(const char* bytes, std::size_t count) override {
        ++offers;
        if (refuses) return false;
        blocks.emplace_back(bytes, count);
        return true;
    }

    [[nodiscard]] std::string Text() const {
        std::string text;
        for (const std::string& block : blocks) text += block;
        return text;
    }

    std::vector<std::string> blocks;
    int offers = 0;
    bool refuses = false;
};

/// What an export text writes in the course of `write`.
template <class Write>
std::string Written(Write write) {
    CMemorySink sink;
    CExportText text(sink);
    write(text);
    text.FlushOutput();
    return sink.Text();
}
