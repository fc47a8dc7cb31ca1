#pragma once

/// The numbers by which other programs reach the window of Vellumor. Written out, and not taken from its own
/// header, because a number that changes there breaks whoever posts the old one.
namespace commands {

inline constexpr unsigned kClean = 32807;
inline constexpr unsigned kHelpContent = 32823;
inline constexpr unsigned kCheckAll = 32825;
inline constexpr unsigned kUncheck = 32826;
inline constexpr unsigned kCheck = 32827;
inline constexpr unsigned kAnalyze = 32828;
inline constexpr unsigned kUndo = 32830;
inline constexpr unsigned kCompact = 32835;
inline constexpr unsigned kBackup = 32836;
inline constexpr unsigned kRestore = 32837;
inline constexpr unsigned kOpenRegistryEditor = 32839;
inline constexpr unsigned kAbout = 57664;
inline constexpr unsigned kExit = 57665;
inline constexpr unsigned kToggleToolBar = 59392;
inline constexpr unsigned kToggleStatusBar = 59393;

}  // namespace commands

/// The bars' and the progress dialog's controls.
namespace controls {

inline constexpr int kToolBar = 59392;
inline constexpr int kStatusBar = 59393;
inline constexpr int kLastKey = 1010;
inline constexpr int kCurrentKey = 1011;
inline constexpr int kLabel = 1013;
inline constexpr int kProgressBar = 1039;

}  // namespace controls
