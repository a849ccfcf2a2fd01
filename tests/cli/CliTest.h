#pragma once

#include "cli/CommandLine.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

namespace corvane::test {

/// Records the output of commands.
class TestConsole : public Console {
  public:
    explicit TestConsole(QString dataFolder) : m_dataFolder(std::move(dataFolder)) {}

    void writeOutput(const QByteArray &utf8) override { output += utf8; }
    void writeError(const QByteArray &utf8) override { error += utf8; }
    bool errorIsTerminal() const override { return isTerminal; }
    QString dataFolder() const override { return m_dataFolder; }
    std::unique_ptr<QSettings> userDefaults() const override {
        return std::make_unique<QSettings>(m_dataFolder + QStringLiteral(".conf"),
                                           QSettings::IniFormat);
    }

    void useData(const QString &folder) { m_dataFolder = folder; }

    QByteArray output;
    QByteArray error;
    bool isTerminal = false;

  private:
    QString m_dataFolder;
};

/// Runs commands in this process, with a data folder and a folder for each test.
class CliTest : public testing::Test {
  protected:
    /// Splits the line at spaces and replaces "P" by the project file and "@name" by a path in the
    /// test's folder.
    int run(const char *line) {
        console.output.clear();
        console.error.clear();
        QStringList arguments{QStringLiteral("corvane-cli")};
        const QStringList words =
            QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (const QString &word : words) {
            arguments.append(word == QStringLiteral("P")         ? project
                             : word.startsWith(QLatin1Char('@')) ? folder.at(word.mid(1))
                                                                 : word);
        }
        return runCli(arguments, console);
    }

    /// Runs the command with --json and returns the object it prints.
    JSONValue::Object json(const char *line, int status = kAllDone) {
        EXPECT_EQ(run((QByteArray(line) + " --json").constData()), status)
            << line << console.error.data();
        return parse(console.output);
    }

    /// Throws `JSONSyntaxError` for anything but one JSON object.
    static JSONValue::Object parse(const QByteArray &utf8) {
        const JSONValue value = JSONDocument::parse(utf8).root().toValue();
        EXPECT_TRUE(value.object()) << utf8.data();
        return value.object() ? *value.object() : JSONValue::Object();
    }

    static JSONValue::Array list(const JSONValue::Object &object, const char *key) {
        const JSONValue value = object.value(QLatin1String(key));
        return value.array() ? *value.array() : JSONValue::Array();
    }

    static QString text(const JSONValue &object, const char *key) {
        const JSONValue value =
            object.object() ? object.object()->value(QLatin1String(key)) : JSONValue();
        return value.string() ? *value.string() : QString();
    }

    /// Expects the members of a JSON object. The object may have more.
    static void expectMembers(const JSONValue::Object &object, const QByteArray &expected) {
        const JSONValue::Object members = parse(expected);
        for (const QString &key : members.keys()) {
            EXPECT_EQ(object.value(key), members.value(key)) << key.toStdString();
        }
    }

    /// The values of a text member in all rows.
    static QStringList column(const JSONValue::Array &rows, const char *key) {
        QStringList texts;
        for (const JSONValue &row : rows) {
            texts.append(text(row, key));
        }
        return texts;
    }

    /// Creates a project and imports the clips clip1.mp4, clip2.mp4, ... without copying them.
    void createWithClips(int count) {
        for (int index = 1; index <= count; ++index) {
            folder.write(QStringLiteral("card/clip%1.mp4").arg(index), noise(5000, quint32(index)));
        }
        folder.folder("p");
        ASSERT_EQ(run("create P --name Harbor"), kAllDone) << console.error.data();
        ASSERT_EQ(run("import P @card"), kAllDone) << console.error.data();
    }

    TestFolder folder;
    TestConsole console{folder.at("data")};
    QString project = folder.at("p/Harbor.corvane");
};

} // namespace corvane::test
