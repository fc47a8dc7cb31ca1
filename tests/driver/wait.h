#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

/// The driven program did not do what was waited for, or a call into it failed. The text names which.
class CDriverError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

constexpr DWORD kPatience = 10'000;  // milliseconds that a program may take to react
constexpr DWORD kPollPeriod = 10;    // milliseconds

[[noreturn]] void FailWaiting(const std::string& what, DWORD patience);

/// Asks again and again until the answer is true in a bool's sense, and returns it.
/// @param what  names the awaited state in the error's text, as in "the message box".
/// @throws CDriverError when `patience` milliseconds pass without such an answer.
template <class Question>
auto WaitFor(const std::string& what, Question ask, DWORD patience = kPatience) {
    const DWORD begin = ::GetTickCount();
    for (;;) {
        auto answer = ask();
        if (answer) return answer;
        if (::GetTickCount() - begin >= patience) FailWaiting(what, patience);
        ::Sleep(kPollPeriod);
    }
}

/// Whether the answer stays false for the whole time: for what must not happen.
template <class Question>
[[nodiscard]] bool StaysFalse(Question ask, DWORD period) {
    const DWORD begin = ::GetTickCount();
    do {
        if (ask()) return false;
        ::Sleep(kPollPeriod);
    } while (::GetTickCount() - begin < period);
    return true;
}
