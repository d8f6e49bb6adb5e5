#include "hosting/KeptCommand.h"

#include "cvs/AdminFiles.h"
#include "cvs/CommandBuilder.h"
#include "framework/base/lead_bytes.h"
#include "framework/base/text.h"

namespace hosting {

using namespace framework;

namespace {

/// What the package writes when there is no message.
constexpr const char* NoMessage = " no messages";
constexpr const char* BinaryMode = "-kb";

}  // namespace

std::vector<std::string> SplitArguments(const std::string& line) {
    std::vector<std::string> arguments;
    std::size_t at = 0;
    for (;;) {
        while (at < line.size() && (line[at] == ' ' || line[at] == '\t'))
            ++at;
        if (at == line.size())
            return arguments;
        std::string argument;
        for (bool quoted = false; at < line.size(); ++at) {
            std::size_t backslashes = 0;
            for (; at < line.size() && line[at] == '\\'; ++at)
                ++backslashes;
            if (at < line.size() && line[at] == '"') {
                // Half of them stand for themselves; an odd one makes the quote a letter.
                argument.append(backslashes / 2, '\\');
                if (backslashes % 2 != 0)
                    argument += '"';
                else
                    quoted = !quoted;
                continue;
            }
            argument.append(backslashes, '\\');
            if (at == line.size() || (!quoted && (line[at] == ' ' || line[at] == '\t')))
                break;
            const std::size_t size = LetterSize(line, at);
            argument.append(line, at, size);
            // Its second byte may look like a backslash.
            at += size - 1;
        }
        arguments.push_back(std::move(argument));
    }
}

bool IsNameBelow(const std::string& name) {
    if (name.empty() || FindFirstOf(name, ":*?\"<>|") != std::string::npos)
        return false;
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = std::min(FindFirstOf(name, "\\/", start), name.size());
        // The system ignores dots and blanks behind a name; one of nothing else leads up.
        std::string part = name.substr(start, end - start);
        part.resize(part.find_last_not_of(". ") + 1);
        if (part.empty() || SameText(part, tandrel::AdminDirectoryName))
            return false;
        if (end == name.size())
            return true;
        start = end + 1;
    }
}

std::optional<TKeptCommand> ParseKeptCommand(const std::string& line, const std::string& folder) {
    // The folder is known: it may hold semicolons, and so may a file's name.
    const std::string end = ";" + folder;
    if (line.size() < end.size() || !SameText(line.substr(line.size() - end.size()), end))
        return {};
    const std::vector<std::string> arguments =
        SplitArguments(line.substr(0, line.size() - end.size()));
    TKeptCommand kept;
    std::size_t at = 1;
    if (arguments.empty())
        return {};
    if (arguments[0] == "add") {
        if (arguments.size() < 3 || arguments[1] != "-m")
            return {};
        if (arguments[2] != NoMessage)
            kept.Message = arguments[2];
        kept.IsBinary = arguments.size() > 3 && arguments[3] == BinaryMode;
        at = kept.IsBinary ? 4 : 3;
    } else if (arguments[0] == "remove") {
        kept.Removes = true;
        // It is about folders; names follow.
        if (arguments.size() > 1 && arguments[1] == "-l")
            at = 2;
    } else {
        return {};
    }
    const bool endsOptions = at < arguments.size() && arguments[at] == "--";
    kept.Names.assign(arguments.begin() + static_cast<std::ptrdiff_t>(at + (endsOptions ? 1 : 0)),
                      arguments.end());
    for (const std::string& name : kept.Names)
        if (!IsNameBelow(name) || (!endsOptions && name.starts_with('-')))
            return {};
    return kept.Names.empty() ? std::nullopt : std::optional(kept);
}

std::string KeptLine(const TKeptCommand& kept, const std::string& folder) {
    std::string line = kept.Removes ? " remove" : " add -m ";
    if (!kept.Removes)
        line += tandrel::QuoteArgument(kept.Message.empty() ? NoMessage : kept.Message, true);
    if (kept.IsBinary)
        line += std::string(" ") + BinaryMode;
    line += " --";
    for (const std::string& name : kept.Names)
        line += " " + tandrel::QuoteArgument(name, false);
    return line + ";" + folder;
}

std::vector<TKeptCommand> WithoutTakenBack(std::vector<TKeptCommand> commands) {
    for (std::size_t later = 0; later < commands.size(); ++later) {
        if (!commands[later].Removes)
            continue;
        std::erase_if(commands[later].Names, [&](const std::string& removed) {
            for (std::size_t i = later; i-- > 0;) {
                const bool found = std::erase_if(commands[i].Names, [&](const std::string& name) {
                                       return !commands[i].Removes && SameText(name, removed);
                                   }) > 0;
                if (found)
                    return true;
            }
            return false;
        });
    }
    std::erase_if(commands, [](const TKeptCommand& kept) { return kept.Names.empty(); });
    return commands;
}

std::string TKeptCommand::Description() const {
    std::string text = Removes ? "remove" : IsBinary ? "add as binary" : "add";
    const char* separator = " ";
    for (const std::string& name : Names) {
        text += separator + name;
        separator = ", ";
    }
    return text;
}

}  // namespace hosting
