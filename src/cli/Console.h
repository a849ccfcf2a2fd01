#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>

#include <memory>

namespace corvane {

/// What a command talks to: the two output streams, and where the user's data lie. A test gives one
/// of its own.
class Console {
  public:
    virtual ~Console();

    virtual void writeOutput(const QByteArray &utf8) = 0;
    virtual void writeError(const QByteArray &utf8) = 0;
    /// Whether somebody watches the error stream, so that a progress bar makes sense on it.
    virtual bool errorIsTerminal() const = 0;
    /// The folder of the recent list and the registry of grants.
    virtual QString dataFolder() const = 0;
    /// The user's settings.
    virtual std::unique_ptr<QSettings> userDefaults() const = 0;
};

/// The process's own streams and the user's own folder.
class SystemConsole : public Console {
  public:
    void writeOutput(const QByteArray &utf8) override;
    void writeError(const QByteArray &utf8) override;
    bool errorIsTerminal() const override;
    QString dataFolder() const override;
    std::unique_ptr<QSettings> userDefaults() const override;

    /// Hands out what is still buffered. False if any of the output couldn't be written.
    bool finishOutput();
};

/// The text with what would move a terminal's cursor or break a line made harmless: file names can
/// hold anything.
QString printable(const QString &text);

} // namespace corvane
