#include "analysis/history/user_assist_rules.h"

namespace {

char Rotate(char letter) {
    const bool isLower = letter >= 'a' && letter <= 'z';
    const bool isUpper = letter >= 'A' && letter <= 'Z';
    if (!isLower && !isUpper) return letter;
    const bool isSecondHalf = letter >= (isLower ? 'n' : 'N');
    return static_cast<char>(isSecondHalf ? letter - 13 : letter + 13);
}

}  // namespace

std::string DecodeUsageName(std::string_view stored) {
    std::string name(stored);
    for (char& letter : name) letter = Rotate(letter);
    return name;
}
