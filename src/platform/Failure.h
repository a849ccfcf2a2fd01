#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace corvane {

/// The base class of the program's exceptions.
///
/// `description()` is a complete message for the user: it names the file and, if the user can do
/// something about the failure, says what. A failure caused by another one includes its
/// description.
class Failure : public std::exception {
  public:
    explicit Failure(QString description)
        : m_description(std::move(description)), m_utf8(m_description.toUtf8()) {}

    const QString &description() const noexcept { return m_description; }
    const char *what() const noexcept override { return m_utf8.constData(); }

  private:
    QString m_description;
    QByteArray m_utf8;
};

/// Thrown by an operation that is stopped through its `std::stop_token`. Not a `Failure`, so that
/// handlers of failures don't report it.
class Cancelled : public std::exception {
  public:
    const char *what() const noexcept override { return "Cancelled"; }
};

/// The message for the user: the description of a `Failure`, otherwise `what()`.
QString describe(const std::exception &error);

} // namespace corvane
