#include "tests/driver/wait.h"

void FailWaiting(const std::string& what, DWORD patience) {
    throw CDriverError("waited " + std::to_string(patience) + " ms in vain for " + what);
}
