#pragma once

// Checks of HKEY_CLASSES_ROOT: file types, program identifiers, content types, application ids.

/// Class keys without content, "shell" keys without a command, "DefaultIcon" keys without an icon.
void CheckClassKeys();
/// File-type keys (names beginning with a dot) that hold nothing at all.
void CheckEmptyFileTypes();
/// File types whose type name leads to no key, and file-type keys without value and subkey.
void CheckFileTypeLinks();
/// Program identifiers whose current version is not named or not registered.
void CheckCurrentVersions();
/// MIME content types that are empty, or whose extension or class is not registered.
void CheckMimeTypes();
/// Programs registered under AppID whose application id is not.
void CheckAppIds();
