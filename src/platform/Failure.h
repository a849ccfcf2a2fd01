#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace corvane {

/// The base of every failure of this program.
///
/// `description()` is the finished message for the user: it names the file and, where there is
/// something to do, says what. A failure that wraps another one carries that one's description
/// inside its own. Failures are thrown by value and caught by const reference.
class Failure : public std::exception {
  public:
    explicit Failure(QString description)
        : m_description(std::move(description)), m_utf8(m_description.toUtf8()) {}

    const QString &description() const noexcept { return m_description; }

    /// The description in UTF-8, for tools that only know `std::exception`.
    const char *what() const noexcept override { return m_utf8.constData(); }

  private:
    QString m_description;
    QByteArray m_utf8;
};

/// Thrown by work that its `std::stop_token` ended. It is no failure of that work, so it isn't a
/// `Failure`: a caller that records failures must name this case on its own.
class Cancelled : public std::exception {
  public:
    const char *what() const noexcept override { return "Cancelled"; }
};

/// What a user is told about any exception: a failure's own description, else its `what()`.
QString describe(const std::exception &error);

/// The same for the exception that is being handled now or was kept in an `exception_ptr`.
QString describe(const std::exception_ptr &error);

} // namespace corvane
