#include "console/rights.h"

#include <windows.h>

#include "platform/host_services.h"
#include "platform/owners.h"
#include "platform/privileges.h"

bool HasRights(CTerminal& terminal, std::initializer_list<const char*> privileges) {
    if (!SystemActions().IsAdministrator()) {
        WriteErrorLine(terminal,
                       "Administrator rights are missing. Start the command line as administrator.");
        return false;
    }
    CUniqueHandle token;
    if (privileges.size() > 0 &&
        ::OpenProcessToken(::GetCurrentProcess(), kTokenAccess, token.Receive()) == FALSE) {
        WriteErrorLine(terminal, "The rights of this process cannot be read.");
        return false;
    }
    for (const char* privilege : privileges)
        if (!SetTokenPrivilege(token.Get(), privilege, true)) {
            WriteErrorLine(terminal, std::string("The privilege ") + privilege + " is missing.");
            return false;
        }
    return true;
}
