#pragma once

#include <string>
#include <vector>

/// How often one imported function was called.
struct CallCount {
    std::string function;
    long calls;
};

/// Counts the calls that this program makes to the functions of the system which cost most: registry, sends
/// and waits, files, folders of the system. It counts while it lives; only one can live at a time.
class CCallCounter {
public:
    enum class Kind { Registry, Send, Wait, File, Folder };

    CCallCounter();
    CCallCounter(const CCallCounter&) = delete;
    CCallCounter& operator=(const CCallCounter&) = delete;
    ~CCallCounter();

    /// All calls of a kind so far.
    [[nodiscard]] static long Calls(Kind kind);
    /// The functions of a kind that were called.
    [[nodiscard]] static std::vector<CallCount> CallsOf(Kind kind);
    [[nodiscard]] static long CallsTo(const char* function);
};
