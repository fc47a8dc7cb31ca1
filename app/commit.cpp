#include "app/commit.h"

#include <commit_text.h>  // written by the build

const char* SourceCommit() { return VELLUMOR_COMMIT; }
