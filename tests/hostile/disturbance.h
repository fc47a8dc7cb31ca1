#pragma once

/// The argument with which this program disturbs instead of testing.
inline constexpr char kDisturb[] = "--disturb";

/// The event that is set each time all lists have been disturbed once more.
inline constexpr char kDisturbedEvent[] = "VellumorHostDisturbed";

/// Makes, fills, renames and deletes keys and values in every list that a check reads, until it is ended.
[[noreturn]] void DisturbForEver();
