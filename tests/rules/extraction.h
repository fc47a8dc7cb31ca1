#pragma once

#include <string>
#include <string_view>

#include "registry/file_reference_rules.h"
#include "tests/rules/exact_buffer.h"

constexpr std::size_t kPathBytes = 260;         // the room that every caller gives
constexpr char kUntouched = '\xEE';             // fills what an extraction has not written
constexpr std::string_view kNoPath = "(none)";  // in place of a path, where there is none

/// What an extraction leaves behind.
struct Extraction {
    std::string path;       // or kNoPath
    std::string text;       // the source text as it stands afterwards
    std::string pathBytes;  // every byte of the output buffer
    std::string textBytes;  // every byte of the source buffer
};

/// Extracts from a text that may hold zeros; a terminator is put behind it.
inline Extraction Extract(std::string_view text, std::size_t room = kPathBytes) {
    CExactBuffer source = CExactBuffer::Terminated(text);
    CExactBuffer path = CExactBuffer::Sized("", room, kUntouched);
    const bool found = ExtractFilePath(source.Data(), path.Room());
    return {found ? path.Text() : std::string(kNoPath), source.Text(), std::string(path.View()),
            std::string(source.View())};
}

inline std::string PathIn(std::string_view text, std::size_t room = kPathBytes) {
    return Extract(text, room).path;
}
