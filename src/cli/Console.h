#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>

#include <memory>

namespace corvane {

/// The environment of a command: its output streams and the user's data. Replaced by tests.
class Console {
  public:
    virtual ~Console();

    virtual void writeOutput(const QByteArray &utf8) = 0;
    virtual void writeError(const QByteArray &utf8) = 0;
    /// True if the error stream is a terminal, so that it can show a progress bar.
    virtual bool errorIsTerminal() const = 0;
    /// The folder of the recent list and the registry of grants.
    virtual QString dataFolder() const = 0;
    /// The user's settings.
    virtual std::unique_ptr<QSettings> userDefaults() const = 0;
};

/// The streams of the process and the user's data folder.
class SystemConsole : public Console {
  public:
    void writeOutput(const QByteArray &utf8) override;
    void writeError(const QByteArray &utf8) override;
    bool errorIsTerminal() const override;
    QString dataFolder() const override;
    std::unique_ptr<QSettings> userDefaults() const override;

    /// Flushes the output. Returns false if any of it could not be written.
    bool finishOutput();
};

/// Replaces control characters, which file names may contain, so that text cannot affect the
/// terminal.
QString printable(const QString &text);

} // namespace corvane
