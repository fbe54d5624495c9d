#include "app/CommandLine.h"

namespace commandline
{

std::optional<QString> answer(const QStringList &arguments)
{
    for (const QString &argument : arguments) {
        if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            return QStringLiteral("Usage: larkspool [OPTION]\n"
                                  "Keeps a history of the clipboard, and shows it on a hot key.\n"
                                  "Started a second time, it shows or hides the history of the first.\n"
                                  "\n"
                                  "  -h, --help     print this help\n"
                                  "  -v, --version  print the version");
        }
        if (argument == QLatin1String("--version") || argument == QLatin1String("-v"))
            return QStringLiteral("larkspool " LARKSPOOL_VERSION);
    }
    return std::nullopt;
}

std::optional<QString> complaint(const QStringList &arguments)
{
    if (arguments.isEmpty())
        return std::nullopt;
    return QStringLiteral("larkspool: unknown argument \"%1\"; larkspool --help lists what there is")
        .arg(arguments.front().simplified());
}

} // namespace commandline
