#pragma once

#include <string>

/// Opens the system's registry editor at a key: ends every editor that runs, since a running one would
/// neither read nor keep the remembered key, writes the key where the editor looks on start, and starts it
/// maximised. Nothing is started, and nothing reported, when the remembered key cannot be written.
void OpenRegistryEditorAt(const std::string& keyPath);
