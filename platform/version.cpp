#include "platform/version.h"

#include <commit_text.h>  // written by the build

namespace {

constexpr const char* kArchitecture = sizeof(void*) == 4 ? "x86" : "x64";

}  // namespace

const char* SourceCommit() { return VELLUMOR_COMMIT; }

std::string VersionLine(const std::string& title) {
    return title + " (" + kArchitecture + ", built from " + SourceCommit() + ")";
}
