#pragma once

// Where the user's histories stand, under HKEY_CURRENT_USER.
inline constexpr char kTypedUrlsArea[] = R"(Software\Microsoft\Internet Explorer\TypedURLs)";
inline constexpr char kLastVisitedArea[] =
    R"(Software\Microsoft\Windows\CurrentVersion\Explorer\ComDlg32\LastVisitedMRU)";
inline constexpr char kOpenSaveArea[] =
    R"(Software\Microsoft\Windows\CurrentVersion\Explorer\ComDlg32\OpenSaveMRU)";
inline constexpr char kFileExtsArea[] = R"(Software\Microsoft\Windows\CurrentVersion\Explorer\FileExts)";
inline constexpr char kRecentDocsArea[] = R"(Software\Microsoft\Windows\CurrentVersion\Explorer\RecentDocs)";
inline constexpr char kRunArea[] = R"(Software\Microsoft\Windows\CurrentVersion\Explorer\RunMRU)";
inline constexpr char kStreamArea[] = R"(Software\Microsoft\Windows\CurrentVersion\Explorer\StreamMRU)";
inline constexpr char kWallpaperArea[] =
    R"(Software\Microsoft\Windows\CurrentVersion\Explorer\Wallpaper\MRU)";
inline constexpr char kUserAssistArea1[] =
    R"(Software\Microsoft\Windows\CurrentVersion\Explorer\UserAssist\{75048700-EF1F-11D0-9888-006097DEACF9}\Count)";
inline constexpr char kUserAssistArea2[] =
    R"(Software\Microsoft\Windows\CurrentVersion\Explorer\UserAssist\{5E6AB780-7743-11CF-A12B-00AA004AE837}\Count)";
