#include "framework/prompts.h"

#include "framework/standard_ids.h"
#include "platform/text.h"

namespace {

// The prompts of the system menu's commands (SC_SIZE = 0xF000 and on, in steps of 16) stand in this order.
constexpr UINT kFirstSystemCommand = SC_SIZE;
constexpr UINT kFirstSystemPrompt = IDS_SYSTEM_COMMANDS;

}  // namespace

std::string CommandPrompt(UINT id) {
    const std::string text = LoadText(id);
    return text.substr(0, text.find('\n'));
}

std::string CommandTip(UINT id) {
    const std::string text = LoadText(id);
    const std::size_t end = text.find('\n');
    return end == std::string::npos ? std::string() : text.substr(end + 1);
}

std::string MenuPrompt(UINT id, UINT flags, bool menuIsOpen) {
    if (!menuIsOpen || (flags & (MF_POPUP | MF_SEPARATOR)) != 0) return {};
    if (id >= kFirstSystemCommand) id = kFirstSystemPrompt + ((id - kFirstSystemCommand) >> 4);
    return CommandPrompt(id);
}
