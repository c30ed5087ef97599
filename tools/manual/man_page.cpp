// SPDX-License-Identifier: Apache-2.0
#include "tools/manual/man_page.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include <CLI/CLI.hpp>

#include "tools/manual/argument.h"

namespace manual {
namespace {

constexpr std::string_view kIndent = "  "; // of the lines of a help, and between their columns

// As it stands, whatever it means to the formatter.
std::string Escape(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '\\':
            escaped += "\\e";
            break;
        case '-':
            escaped += "\\-";
            break;
        case '\'':
            escaped += "\\(aq";
            break;
        case '`':
            escaped += "\\(ga";
            break;
        case '^':
            escaped += "\\(ha";
            break;
        case '~':
            escaped += "\\(ti";
            break;
        default:
            escaped += c;
        }
    }
    return escaped.starts_with('.') ? "\\&" + escaped : escaped;
}

std::string Bold(std::string_view text)
{
    return "\\fB" + Escape(text) + "\\fR";
}

std::string Italic(std::string_view text)
{
    return "\\fI" + Escape(text) + "\\fR";
}

std::string Upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
    return text;
}

// Where a sentence ends stands in the source's line breaks.
std::string Sentences(std::string text)
{
    if (!text.empty() && (std::isalnum(static_cast<unsigned char>(text.back())) || text.back() == ')'))
        text += '.';
    std::string lines = Escape(text);
    for (std::size_t end = lines.find(". "); end != std::string::npos; end = lines.find(". ", end + 1))
        lines[end + 1] = '\n';
    return lines + '\n';
}

std::string Taken(const CLI::Option &option)
{
    const Argument argument = ArgumentOf(option);
    std::string words;
    for (const std::string &choice : argument.choices)
        words += (words.empty() ? "" : "|") + Bold(choice);
    return words.empty() && !argument.name.empty() ? Italic(argument.name) : words;
}

std::string Typed(const CLI::Option &option)
{
    const std::string taken = Taken(option);
    return Bold(NameOf(option)) + (taken.empty() ? "" : " " + taken);
}

// Beside the description, which a person has written.
std::string Conditions(const CLI::Option &option)
{
    std::string text;
    if (const std::string range = ArgumentOf(option).range; !range.empty())
        text += "From " + range.substr(0, range.find(" - ")) + " to " + range.substr(range.find(" - ") + 3) +
                ".\n";
    std::vector<std::string> needed;
    for (const CLI::Option *other : option.get_needs())
        needed.push_back(NameOf(*other));
    std::sort(needed.begin(), needed.end());
    for (const std::string &name : needed)
        text += "Only with " + Bold(name) + ".\n";
    return text + (option.get_required() ? "Required.\n" : "");
}

std::string Items(const CLI::App &app)
{
    std::string text;
    for (const CLI::Option *positional : PositionalsOf(app))
        text += ".TP\n" + Italic(positional->get_name(true)) + '\n' +
                Sentences(positional->get_description()) + Conditions(*positional);
    for (const CLI::Option *option : OptionsOf(app))
        text += ".TP\n" + Typed(*option) + '\n' + Sentences(option->get_description()) + Conditions(*option);
    return text;
}

std::string Synopsis(const CLI::App &app, const std::string &name)
{
    std::string text = Bold(name);
    for (const CLI::Option *option : OptionsOf(app))
        text += option->get_required() ? "\n" + Typed(*option) : "";
    text += "\n[" + Italic("OPTION") + " ...]\\&";
    for (const CLI::Option *positional : PositionalsOf(app))
        text += '\n' + (positional->get_required() ? Italic(positional->get_name(true))
                                                   : "[" + Italic(positional->get_name(true)) + "]");
    return text + (CommandsOf(app).empty() ? "" : "\n" + Italic("COMMAND")) + '\n';
}

std::string CodeLine(const std::string &line)
{
    return ".RS 4\n.nf\n" + Escape(line) + "\n.fi\n.RE\n";
}

// Of what stands below the help's options: indented lines are items or examples, under a heading of their
// own.
struct Footer
{
    std::string text;     // paragraphs that belong to the description
    std::string sections; // with their headings
};

std::string FooterItem(const std::string &line)
{
    const std::size_t gap = line.find(kIndent);
    return gap == std::string::npos
               ? CodeLine(line)
               : ".TP\n" + Bold(line.substr(0, gap)) + '\n' + Sentences(line.substr(gap + kIndent.size()));
}

std::string Heading(const std::string &line, bool ofCommand)
{
    return ofCommand ? ".PP\n" + Escape(line) + '\n'
                     : ".SH \"" + Upper(line.substr(0, line.size() - 1)) + "\"\n";
}

Footer ReadFooter(const CLI::App &app, bool ofCommand)
{
    Footer footer;
    const std::vector<std::string> lines = Split(app.get_footer(), '\n');
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].starts_with(kIndent))
            footer.sections += FooterItem(lines[i].substr(kIndent.size()));
        else if (i + 1 < lines.size() && lines[i + 1].starts_with(kIndent))
            footer.sections += Heading(lines[i], ofCommand);
        else if (!lines[i].empty())
            footer.text += Escape(lines[i]) + '\n';
    }
    if (!footer.text.empty())
        footer.text.insert(0, ".PP\n");
    return footer;
}

std::string Command(const CLI::App &command, const std::string &name)
{
    const Footer footer = ReadFooter(command, true);
    return ".SS \"" + Escape(name) + "\"\n" + Synopsis(command, name) + ".PP\n" +
           Sentences(command.get_description()) + footer.text + Items(command) + footer.sections;
}

std::string Commands(const CLI::App &app, const std::string &name)
{
    std::string text;
    for (const CLI::App *command : CommandsOf(app)) {
        const std::string whole = name + ' ' + command->get_name();
        text += CommandsOf(*command).empty() ? Command(*command, whole) : Commands(*command, whole);
    }
    return text;
}

} // namespace

std::string ManPage(const CLI::App &app, const Imprint &imprint, const std::string &rest)
{
    std::string summary = app.get_description();
    if (summary.ends_with('.'))
        summary.pop_back();
    const Footer footer = ReadFooter(app, false);
    const std::string commands = Commands(app, app.get_name());
    return ".TH \"" + Upper(app.get_name()) + "\" 8 \"" + imprint.date + "\" \"pba_view " + imprint.version +
           "\" \"System Administration\"\n.SH NAME\n" + app.get_name() + " \\- " + Escape(summary) +
           "\n.SH SYNOPSIS\n" + Synopsis(app, app.get_name()) + ".SH DESCRIPTION\n" +
           Sentences(app.get_description()) + footer.text + ".SH OPTIONS\n" + Items(app) +
           (commands.empty() ? "" : ".SH COMMANDS\n" + commands) + footer.sections + rest;
}

} // namespace manual
