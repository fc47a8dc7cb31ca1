#pragma once

#include <random>
#include <string>

// Rows at random places that resemble the rows of an analysis.

/// A key below which rows are planted.
struct Place {
    const char* rootName;
    const char* path;
};

/// Where the rows of a seed are planted: in turn where all kinds of repair are at home, and where one looks
/// at the path from the root on.
[[nodiscard]] Place PlaceOf(unsigned seed);
/// Makes all those keys that are missing.
void MakePlaces();

/// The names that are planted right below a place; nothing else there has one of them.
inline constexpr const char* kTops[] = {"{20090514-0000-0000-0000-000000000001}",
                                        "{20090514-0000-0000-0000-000000000002}",
                                        "{20090514-short}",
                                        ".vellumortest",
                                        "VellumorTest",
                                        "VellumorTest Classes",
                                        "VellumorTest\"q\"",
                                        "VellumorTest%p%"};

/// A number below a bound.
[[nodiscard]] int Below(std::mt19937& random, int bound);

/// A path of names that the kinds of repair look for, and of some that only resemble them.
[[nodiscard]] std::string RandomPath(std::mt19937& random);
