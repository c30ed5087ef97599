// SPDX-License-Identifier: Apache-2.0
#include "tools/manual/completion.h"

#include <CLI/CLI.hpp>

#include "tools/manual/argument.h"

namespace manual {
namespace {

// NAME is the program's. Of the tables each line says for one place on the command line what may stand there:
// words, or files, or directories.
constexpr char kScript[] = R"(# Completion of NAME's command line for bash, made from its description.
_NAME()
{
    local place='NAME' option='' current=${COMP_WORDS[COMP_CWORD]} used=' ' number=0 i word
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ -n $option && $word != '=' ]]; then
            option=''
        elif [[ $word == -* ]]; then
            used+="$word "
            case "$place $word" in
                OPTIONS) option=$word ;;
            esac
        elif [[ $word != '=' ]]; then
            case "$place $word" in
                COMMANDS) place+=" $word" ;;
                *) number=$((number + 1)) ;;
            esac
        fi
    done
    [[ $current != '=' ]] || current=''

    local key="$place $option" words='' kind=''
    if [[ -z $option ]]; then
        key="$place $number"
        [[ $current != -* ]] || key="$place -"
    fi
    case "$key" in
TABLE    esac
    COMPREPLY=()
    case $kind in
        FILE) compopt -o filenames && mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
        DIR) compopt -o filenames && mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
    esac
    for word in $words; do
        [[ $word != "$current"* || $used == *" $word "* ]] || COMPREPLY+=("$word")
    done
}
complete -F _NAME NAME
)";

// Each of them: what has been collected of one command line.
struct Tables
{
    std::string commands; // places that a word leads to
    std::string options;  // those that take an argument
    std::string lines;
};

std::string Quoted(const std::string &text)
{
    return "'" + text + "'";
}

void AddAlternative(std::string *alternatives, const std::string &place)
{
    *alternatives += (alternatives->empty() ? "" : " | ") + Quoted(place);
}

void AddLine(std::string *lines, const std::string &place, const std::string &what)
{
    *lines += "        " + Quoted(place) + ") " + what + " ;;\n";
}

void AddArgument(Tables *tables, const std::string &place, const CLI::Option &option)
{
    const Argument argument = ArgumentOf(option);
    std::string words;
    for (const std::string &choice : argument.choices)
        words += (words.empty() ? "" : " ") + choice;
    if (!words.empty())
        AddLine(&tables->lines, place, "words=" + Quoted(words));
    else if (argument.name == "FILE" || argument.name == "DIR")
        AddLine(&tables->lines, place, "kind=" + argument.name);
}

void AddOptions(Tables *tables, const std::string &place, const CLI::App &app)
{
    std::string words;
    for (const CLI::Option *option : OptionsOf(app)) {
        for (const std::string &name : option->get_lnames()) {
            const std::string typed = " --" + name;
            words += typed;
            if (option->get_items_expected_max() == 0)
                continue;
            AddAlternative(&tables->options, place + typed);
            AddArgument(tables, place + typed, *option);
        }
    }
    AddLine(&tables->lines, place + " -", "words=" + Quoted(words));
}

void AddPlace(Tables *tables, const std::string &place, const CLI::App &app)
{
    AddOptions(tables, place, app);
    const auto positionals = PositionalsOf(app);
    for (std::size_t i = 0; i < positionals.size(); ++i)
        AddArgument(tables, place + " " + std::to_string(i), *positionals[i]);
    std::string words;
    for (const CLI::App *command : CommandsOf(app)) {
        words += (words.empty() ? "" : " ") + command->get_name();
        AddAlternative(&tables->commands, place + " " + command->get_name());
        AddPlace(tables, place + " " + command->get_name(), *command);
    }
    if (!words.empty())
        AddLine(&tables->lines, place + " 0", "words=" + Quoted(words));
}

void Replace(std::string *text, const std::string &what, const std::string &by)
{
    for (std::size_t at = text->find(what); at != std::string::npos; at = text->find(what, at + by.size()))
        text->replace(at, what.size(), by);
}

} // namespace

std::string BashCompletion(const CLI::App &app)
{
    Tables tables;
    AddPlace(&tables, app.get_name(), app);
    std::string script = kScript;
    Replace(&script, "NAME", app.get_name());
    // A pattern that nothing matches, where there are none.
    Replace(&script, "OPTIONS", tables.options.empty() ? "''" : tables.options);
    Replace(&script, "COMMANDS", tables.commands.empty() ? "''" : tables.commands);
    Replace(&script, "TABLE", tables.lines);
    return script;
}

} // namespace manual
