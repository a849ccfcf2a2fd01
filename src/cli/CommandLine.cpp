#include "cli/CommandLine.h"

#include <QCoreApplication>

#include <algorithm>

namespace corvane {

namespace {

const QString kProgram = QStringLiteral("corvane-cli");

void addCommonOptions(QCommandLineParser &parser) {
    parser.addOption(flagOption("json", "Print one JSON object on standard output."));
    parser.addOption(
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Print this help.")});
}

QString commandHelp(const CliCommand &command, const QCommandLineParser &parser) {
    const QString help = parser.helpText();
    return QStringLiteral("Usage: %1 %2 %3 [OPTIONS]\n\n%4\n\n%5")
        .arg(kProgram, command.name, command.synopsis, command.summary,
             help.mid(help.indexOf(QStringLiteral("Options:"))));
}

QString generalHelp() {
    QString help = QStringLiteral("Usage: %1 COMMAND [ARGUMENTS] [OPTIONS]\n\n"
                                  "Reviews video footage and delivers the chosen takes, without a "
                                  "screen.\n\nCommands:\n")
                       .arg(kProgram);
    for (const CliCommand &command : commands()) {
        help += QStringLiteral("  %1 %2\n").arg(command.name, -9).arg(command.summary);
    }
    return help + QStringLiteral("\n'%1 COMMAND --help' tells a command's arguments and options.\n")
                      .arg(kProgram);
}

/// A call of the program: parses the command line, runs the command and prints failures.
class ProgramRun {
  public:
    ProgramRun(const QStringList &arguments, Console &console)
        : m_arguments(arguments.mid(1)),
          m_console(console),
          m_isJSON(m_arguments.contains(QStringLiteral("--json"))) {}

    int run() {
        const QString first = m_arguments.value(0);
        if (first == QStringLiteral("--help") || first == QStringLiteral("-h")) {
            return print("help", generalHelp());
        }
        if (first == QStringLiteral("--version")) {
            return print("version", QStringLiteral(CORVANE_VERSION), kProgram + QLatin1Char(' '));
        }
        const auto command = std::ranges::find(commands(), first, &CliCommand::name);
        if (command != commands().cend()) {
            return runCommand(*command);
        }
        return refuseUsage({}, first.isEmpty() || first.startsWith(QLatin1Char('-'))
                                   ? QStringLiteral("A command is missing.")
                                   : QStringLiteral("Unknown command \"%1\".").arg(first));
    }

  private:
    int runCommand(const CliCommand &command) {
        QCommandLineParser parser;
        addCommonOptions(parser);
        parser.addOptions(command.options);
        const bool isValid = parser.parse(m_arguments);
        if (parser.isSet(QStringLiteral("help"))) {
            return print("help", commandHelp(command, parser));
        }
        if (!isValid) {
            return refuseUsage(command.name, parser.errorText());
        }
        const qsizetype argumentCount = parser.positionalArguments().size();
        const QStringList arguments = command.synopsis.section(QStringLiteral(" --"), 0, 0)
                                          .split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (argumentCount < arguments.size()) {
            return refuseUsage(command.name, QStringLiteral("An argument is missing: %1 %2")
                                                 .arg(command.name, command.synopsis));
        }
        const bool isOpenEnded = command.synopsis.contains(QStringLiteral("..."));
        if (!isOpenEnded && argumentCount > arguments.size()) {
            return refuseUsage(command.name,
                               QStringLiteral("Unexpected argument \"%1\".")
                                   .arg(parser.positionalArguments().at(arguments.size())));
        }
        try {
            return command.run(CommandCall(parser, m_console));
        } catch (const UsageError &error) {
            return refuseUsage(command.name, error.description());
        } catch (const std::exception &error) {
            return refuse(describe(error));
        }
    }

    int print(std::string_view key, const QString &text, const QString &prefix = {}) {
        if (m_isJSON) {
            printObject(key, text);
        } else {
            m_console.writeOutput((prefix + text.trimmed()).toUtf8() + '\n');
        }
        return kAllDone;
    }

    int refuse(const QString &message) {
        m_console.writeError(printable(message).toUtf8() + '\n');
        if (m_isJSON) {
            printObject("error", message);
        }
        return kRefused;
    }

    int refuseUsage(const QString &commandName, const QString &message) {
        const QString program =
            commandName.isEmpty() ? kProgram : kProgram + QLatin1Char(' ') + commandName;
        refuse(program + QStringLiteral(": ") + message);
        m_console.writeError(QStringLiteral("Try '%1 --help'.\n").arg(program).toUtf8());
        return kWrongUsage;
    }

    void printObject(std::string_view key, const QString &text) {
        JSONWriter writer(JSONWriter::Style::Pretty);
        writer.beginObject();
        writer.key(key);
        writer.string(text);
        writer.endObject();
        m_console.writeOutput(writer.finish() + '\n');
    }

    QStringList m_arguments; ///< without the program's name
    Console &m_console;
    bool m_isJSON;
};

} // namespace

const QList<CliCommand> &commands() {
    static const QList<CliCommand> table{
        createCommand(), infoCommand(),    scanCommand(),   importCommand(),  listCommand(),
        markCommand(),   subclipCommand(), exportCommand(), handoffCommand(), mediaCommand(),
        grantsCommand(), anchorCommand(),  verifyCommand(),
    };
    return table;
}

int runCli(const QStringList &arguments, Console &console) {
    return ProgramRun(arguments, console).run();
}

} // namespace corvane
