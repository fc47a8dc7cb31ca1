#pragma once

// Checks of the user's history lists. Every entry of a history is itself what is reported, so that cleaning
// clears it; whether the things named still exist is not asked.

/// Addresses typed into the browser.
void CheckTypedUrls();
/// Folders last visited in file dialogs, per program.
void CheckLastVisitedMru();
/// Files opened and saved in file dialogs, all and by extension.
void CheckOpenSaveMru();
/// What Explorer keeps per file extension: entries without content, and references to what is not registered.
void CheckFileExts();
/// Programs that Explorer offers per file extension.
void CheckFileExtsOpenWithList();
/// Recently opened documents, all and by type.
void CheckRecentDocs();
void CheckRecentDocsByType();
/// Commands of the Run box.
void CheckRunMru();
/// Remembered window views.
void CheckStreamMru();
/// Recently used wallpapers.
void CheckWallpaperMru();
/// How often programs were started.
void CheckUserAssist();
