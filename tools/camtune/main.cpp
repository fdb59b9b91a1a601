// camtune: command-line tool for tuning engineers.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "command.h"

namespace camtune {
namespace cli {
namespace {

std::vector<Command>& table() {
    static std::vector<Command> sTable;
    return sTable;
}

int wordCount(const char* name) {
    return std::strchr(name, ' ') != nullptr ? 2 : 1;
}

// The commands whose name starts with the word `group` ("lint"), as "lint dumpin" and so on.
std::vector<const Command*> groupCommands(const std::string& group) {
    std::vector<const Command*> found;
    for (const Command& command : commands()) {
        const std::string name = command.name;
        if (wordCount(command.name) == 2 && name.compare(0, group.size() + 1, group + " ") == 0) {
            found.push_back(&command);
        }
    }
    return found;
}

void printGroup(FILE* out, const std::string& group, const std::vector<const Command*>& members) {
    std::fprintf(out, "usage: camtune %s <kind> [options]\n\nkinds:\n", group.c_str());
    for (const Command* command : members) {
        std::fprintf(out, "  %-10s %s\n", command->name + group.size() + 1, command->summary);
    }
    std::fprintf(out, "\nRun 'camtune %s <kind> --help' for a kind's options.\n", group.c_str());
}

void printCommandList(FILE* out) {
    std::fprintf(out, "usage: camtune <command> [options]\n\ncommands:\n");
    for (const Command& command : commands()) {
        std::fprintf(out, "  %-18s %s\n", command.name, command.summary);
    }
    std::fprintf(out, "\nRun 'camtune <command> --help' for a command's options.\n");
}

}  // namespace

Registrar::Registrar(const Command& command) {
    auto& commands = table();
    auto at = std::lower_bound(
            commands.begin(), commands.end(), command,
            [](const Command& a, const Command& b) { return std::strcmp(a.name, b.name) < 0; });
    commands.insert(at, command);
}

const std::vector<Command>& commands() {
    return table();
}

}  // namespace cli
}  // namespace camtune

int main(int argc, char** argv) {
    using namespace camtune::cli;
    Args args(argv + 1, argv + argc);
    if (args.empty() || args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
        printCommandList(args.empty() ? stderr : stdout);
        return args.empty() ? 2 : 0;
    }
    if (args[0] == "--version") {
        std::printf("camtune %s\n", CAMTUNE_VERSION);
        return 0;
    }
    // A two-word command ("lint odt") wins over a one-word one of the same first word.
    const Command* found = nullptr;
    for (const Command& command : commands()) {
        std::string name = command.name;
        if (wordCount(command.name) == 2) {
            if (args.size() >= 2 && name == args[0] + " " + args[1]) {
                found = &command;
                break;
            }
        } else if (name == args[0] && found == nullptr) {
            found = &command;
        }
    }
    if (found == nullptr) {
        // "camtune lint" alone, or with a kind it does not have: list the kinds.
        const std::vector<const Command*> members = groupCommands(args[0]);
        if (!members.empty()) {
            const bool help = args.size() >= 2 && (args[1] == "--help" || args[1] == "-h");
            if (args.size() >= 2 && !help) {
                std::fprintf(stderr, "camtune %s: unknown kind '%s'\n\n", args[0].c_str(),
                             args[1].c_str());
            }
            printGroup(help ? stdout : stderr, args[0], members);
            return help ? 0 : 2;
        }
        std::fprintf(stderr, "camtune: unknown command '%s'\n\n", args[0].c_str());
        printCommandList(stderr);
        return 2;
    }
    Args rest(args.begin() + wordCount(found->name), args.end());
    return found->run(rest);
}
