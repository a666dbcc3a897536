#pragma once

#include "hostapp/exchange/ImportOptions.h"

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <CLI/CLI.hpp>

#include <optional>

/// Binds the options of a command to the variables that hold their values, and checks every argument.
///
/// Each adds an option to the command and answers it; parsing writes into the variable, which must live until then, and
/// leaves it unchanged when the option is not given. Any one thread.
namespace plotix {

CLI::Option* addText(CLI::App* command, const std::string& name, QString& text, const std::string& help);

/// One word or more.
CLI::Option* addTexts(CLI::App* command, const std::string& name, QStringList& texts, const std::string& help);

/// "A,B,…" in one word.
CLI::Option* addList(CLI::App* command, const std::string& name, QStringList& items, const std::string& help);

/// The site document that most commands begin with; required.
CLI::Option* addSite(CLI::App* command, QString& site);

/// "1200x600", points.
CLI::Option* addSize(CLI::App* command, const std::string& name, std::optional<QSize>& size, const std::string& help);

/// An ISO 8601 time: seconds since 1970-01-01 UTC.
CLI::Option* addTime(CLI::App* command, const std::string& name, std::optional<double>& time, const std::string& help);

/// "90", "10m", "2h" or "1d": seconds.
CLI::Option* addDuration(CLI::App* command, const std::string& name, std::optional<double>& duration,
                         const std::string& help);

/// COLUMN=`type`, repeatable.
CLI::Option* addPairs(CLI::App* command, const std::string& name, ImportOptions::ByColumn& pairs,
                      const std::string& type, const std::string& help);

/// One of these words, each of which stands for a value.
template <class Value, class Target>
CLI::Option* addChoice(CLI::App* command, const std::string& name, Target& value,
                       const std::vector<std::pair<std::string, Value>>& choices, const std::string& help)
{
    std::vector<std::string> words;
    for (const auto& [word, meaning] : choices)
        words.push_back(word);
    const auto take = [&value, choices](const std::string& given) {
        for (const auto& [word, meaning] : choices)
            if (word == given)
                value = meaning;
    };
    return command->add_option_function<std::string>(name, take, help)
        ->type_name(CLI::detail::join(words, "|"))
        ->check(CLI::IsMember(words));
}

}  // namespace plotix
