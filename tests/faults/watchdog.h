#pragma once

#include <string>

/// Ends this program with a word about what hangs, should this object live for a minute.
class CWatched {
public:
    explicit CWatched(const std::string& what);
    CWatched(const CWatched&) = delete;
    CWatched& operator=(const CWatched&) = delete;
    ~CWatched();
};
