#include "hostapp/cli/Options.h"

#include "hostapp/cli/ArgumentValues.h"

namespace plotix {

CLI::Option* addText(CLI::App* command, const std::string& name, QString& text, const std::string& help)
{
    const auto take = [&text](const std::string& given) { text = QString::fromStdString(given); };
    return command->add_option_function<std::string>(name, take, help);
}

CLI::Option* addTexts(CLI::App* command, const std::string& name, QStringList& texts, const std::string& help)
{
    const auto take = [&texts](const std::vector<std::string>& given) {
        for (const std::string& text : given)
            texts << QString::fromStdString(text);
    };
    return command->add_option_function<std::vector<std::string>>(name, take, help);
}

CLI::Option* addList(CLI::App* command, const std::string& name, QStringList& items, const std::string& help)
{
    const auto take = [&items](const std::string& given) { items = listFromArgument(QString::fromStdString(given)); };
    return command->add_option_function<std::string>(name, take, help);
}

CLI::Option* addSite(CLI::App* command, QString& site)
{
    return addText(command, "SITE", site, "A site document, NAME.plotix, or clickhouse://HOST/DATABASE/SITE")
        ->required();
}

CLI::Option* addSize(CLI::App* command, const std::string& name, std::optional<QSize>& size, const std::string& help)
{
    const auto take = [&size](const std::string& given) { size = sizeFromArgument(QString::fromStdString(given)); };
    return command->add_option_function<std::string>(name, take, help)->type_name("WxH")->check(checkSize);
}

CLI::Option* addTime(CLI::App* command, const std::string& name, std::optional<double>& time, const std::string& help)
{
    const auto take = [&time](const std::string& given) { time = timeFromArgument(QString::fromStdString(given)); };
    return command->add_option_function<std::string>(name, take, help)->type_name("T")->check(checkTime);
}

CLI::Option* addDuration(CLI::App* command, const std::string& name, std::optional<double>& duration,
                         const std::string& help)
{
    const auto take = [&duration](const std::string& given) {
        duration = durationFromArgument(QString::fromStdString(given));
    };
    return command->add_option_function<std::string>(name, take, help)->type_name("DURATION")->check(checkDuration);
}

CLI::Option* addPairs(CLI::App* command, const std::string& name, ImportOptions::ByColumn& pairs,
                      const std::string& type, const std::string& help)
{
    const auto take = [&pairs](const std::vector<std::string>& given) { pairs = pairsFromArguments(given); };
    return command->add_option_function<std::vector<std::string>>(name, take, help)
        ->type_name("COLUMN=" + type)
        ->check(checkPair)
        ->allow_extra_args(false);
}

}  // namespace plotix
