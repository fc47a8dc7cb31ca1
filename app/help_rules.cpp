#include "app/help_rules.h"

std::string HelpFileIn(std::string_view folder) {
    std::string file(folder);
    if (!file.ends_with('\\')) file += '\\';
    return file + "VellumorHelp.chm";
}
