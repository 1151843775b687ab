#include "cli/roff.h"

#include "cli/completion.h"
#include "version.h"

#include <algorithm>
#include <sstream>

namespace tarvo::cli {

namespace {

// A text as it is, whatever roff would see in it.
std::string roffText(const std::string& text) {
    std::string result;
    for (const char c : text) {
        const bool begins = result.empty() || result.back() == '\n';
        if (begins && (c == '.' || c == '\'')) {
            result += "\\&";
        }
        switch (c) {
            case '-':
                result += "\\-";
                break;
            case '\\':
                result += "\\e";
                break;
            case '\'':
                result += "\\(aq";
                break;
            case '`':
                result += "\\(ga";
                break;
            case '^':
                result += "\\(ha";
                break;
            case '~':
                result += "\\(ti";
                break;
            default:
                result += c;
        }
    }
    return result;
}

std::string bold(const std::string& text) {
    return "\\fB" + roffText(text) + "\\fR";
}

std::string italic(const std::string& text) {
    return "\\fI" + roffText(text) + "\\fR";
}

// No date: a page is the same whenever it is made.
std::string pageHead(const std::string& name, const std::string& description) {
    std::string title = name;
    std::ranges::transform(title, title.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return ".TH " + roffText(title) + " 1 \"\" \"qrbtool " + roffText(QRB_VERSION) +
           "\" \"User Commands\"\n.SH NAME\n" + roffText(name) + " \\- " + roffText(description) +
           "\n";
}

std::string optionItem(const DescribedOption& option) {
    std::string line;
    for (const std::string& name : option.names) {
        line += (line.empty() ? "" : ", ") + bold(name);
    }
    if (!option.value.empty()) {
        line += " " + italic(option.value);
    }
    std::string text = option.description;
    if (!option.defaultText.empty()) {
        text += " (default: " + option.defaultText + ")";
    }
    return ".TP\n" + line + "\n" + roffText(text) + ".\n";
}

std::string argumentItem(const DescribedOption& argument) {
    std::string text = argument.description;
    if (!argument.choices.empty()) {
        text += ": " + argument.value;
    }
    return ".TP\n" + italic(argument.names.front()) + "\n" + roffText(text) + ".\n";
}

// Paragraphs; what stands indented is kept as it is.
std::string footerText(const std::string& footer) {
    std::istringstream lines(footer);
    std::string text;
    bool isVerbatim = false;
    bool isNew = true;
    for (std::string line; std::getline(lines, line);) {
        const bool indented = line.starts_with("  ");
        if (indented != isVerbatim && !line.empty()) {
            text += indented ? ".PP\n.nf\n.RS 4\n" : ".RE\n.fi\n";
            isVerbatim = indented;
            isNew = !indented;
        }
        if (line == "Examples:" || line == "Example:") {
            text += ".SH EXAMPLES\n";
            isNew = false;
        } else if (line.empty()) {
            isNew = true;
        } else {
            text += (isNew && !isVerbatim ? ".PP\n" : "") +
                    roffText(isVerbatim ? line.substr(2) : line) + "\n";
            isNew = false;
        }
    }
    return text + (isVerbatim ? ".RE\n.fi\n" : "");
}

// What the footer tells before its examples, and from there on.
std::pair<std::string, std::string> dividedFooter(const std::string& footer) {
    const std::size_t at = footer.starts_with("Example") ? 0 : footer.find("\nExample");
    if (at == std::string::npos) {
        return {footer, ""};
    }
    return {footer.substr(0, at), footer.substr(at == 0 ? 0 : at + 1)};
}

std::string optionsOf(const DescribedCommand& command) {
    std::string text;
    for (const DescribedOption& argument : command.arguments) {
        text += argumentItem(argument);
    }
    for (const DescribedOption& option : command.options) {
        text += optionItem(option);
    }
    return text;
}

std::string synopsisOf(const DescribedCommand& command) {
    const std::size_t words = command.path.empty() ? 1 : 2;
    std::size_t at = 0;
    for (std::size_t i = 0; i < words && at != std::string::npos; ++i) {
        at = command.usage.find(' ', at + 1);
    }
    at = std::min(at, command.usage.size());
    return bold(command.usage.substr(0, at)) + roffText(command.usage.substr(at)) + "\n";
}

std::string seeAlso(const std::vector<std::string>& names) {
    std::string text = ".SH SEE ALSO\n";
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += ".BR " + roffText(names[i]) + " (1)" + (i + 1 < names.size() ? "," : "") + "\n";
    }
    return text;
}

std::string lowered(std::string text) {
    if (text.size() > 1 && text[0] >= 'A' && text[0] <= 'Z' && text[1] >= 'a' && text[1] <= 'z') {
        text[0] = static_cast<char>(text[0] - 'A' + 'a');
    }
    return text;
}

}  // namespace

std::string programPage(const DescribedCommand& program,
                        const std::vector<DescribedOption>& general) {
    std::string description = lowered(program.description);
    if (description.ends_with('.')) {
        description.pop_back();
    }
    std::string text = pageHead("qrbtool", description) + ".SH SYNOPSIS\n" + synopsisOf(program) +
                       ".SH DESCRIPTION\n" + roffText(program.description) + "\n.SH COMMANDS\n";
    std::string group;
    for (const DescribedCommand& command : program.subcommands) {
        if (command.group != group) {
            group = command.group;
            text += ".SS " + roffText(group) + "\n";
        }
        text += ".TP\n.BR qrbtool\\-" + roffText(command.path.back()) + " (1)\n" +
                roffText(command.description) + ".\n";
    }
    text += ".SH OPTIONS\n" + optionsOf(program) + ".SS Of all commands\n";
    for (const DescribedOption& option : general) {
        text += optionItem(option);
    }
    const auto [told, examples] = dividedFooter(program.footer);
    return text + footerText(told) + footerText(examples) + seeAlso({"qrbadmin"});
}

std::string commandPage(const DescribedCommand& command) {
    std::string text = pageHead("qrbtool-" + command.path.back(), lowered(command.description)) +
                       ".SH SYNOPSIS\n" + synopsisOf(command);
    for (const DescribedCommand& action : command.subcommands) {
        text += ".br\n" + synopsisOf(action);
    }
    const auto [told, examples] = dividedFooter(command.footer);
    text += ".SH DESCRIPTION\n" + roffText(command.description) + ".\n" + footerText(told) +
            ".SH OPTIONS\n" + optionsOf(command) +
            ".PP\nThose of all commands are told in\n.BR qrbtool (1).\n";
    if (!command.subcommands.empty()) {
        text += ".SH SUBCOMMANDS\n";
    }
    for (const DescribedCommand& action : command.subcommands) {
        text += ".SS " + roffText(action.path.back()) + "\n" + roffText(action.description) +
                ".\n" + optionsOf(action);
    }
    return text + footerText(examples) + seeAlso({"qrbtool"});
}

}  // namespace tarvo::cli
