#include "console/write_all.h"

#include <algorithm>

bool WriteAll(HANDLE file, std::string_view text) {
    constexpr std::size_t kPieceBytes = 1 << 20;  // old systems refuse much more to a pipe or console at once
    while (!text.empty()) {
        DWORD written = 0;
        const auto count = static_cast<DWORD>(std::min(text.size(), kPieceBytes));
        if (::WriteFile(file, text.data(), count, &written, nullptr) == FALSE || written == 0) return false;
        text.remove_prefix(written);
    }
    return true;
}
