#include "shell/UpdateDownload.h"
#include "ShellFixture.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <openssl/evp.h>

using namespace corvane;
using namespace corvane::test;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// An HTTP server with a response for each path. Requests for other paths are never answered.
class TestServer {
  public:
    TestServer() {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, [this] {
            QTcpSocket *const peer = m_server.nextPendingConnection();
            QObject::connect(peer, &QTcpSocket::readyRead, [this, peer] {
                const QByteArray path = peer->readAll().split(' ').value(1);
                requested.append(path);
                if (responses.contains(path)) {
                    peer->write(responses.value(path));
                    peer->disconnectFromHost();
                }
            });
        });
    }
    QUrl at(const QString &path) const {
        return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path));
    }
    void serve(const QByteArray &path, const QByteArray &body) {
        responses[path] = "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) +
                          "\r\nConnection: close\r\n\r\n" + body;
    }
    void redirect(const QByteArray &path, const QByteArray &to) {
        responses[path] = "HTTP/1.1 302 Found\r\nLocation: " + to +
                          "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
    }

    QHash<QByteArray, QByteArray> responses;
    QList<QByteArray> requested;

  private:
    QTcpServer m_server;
};

class UpdaterControllerTest : public testing::Test {
  protected:
    ~UpdaterControllerTest() override { ::EVP_PKEY_free(m_key); }

    QByteArray publicKey() const {
        QByteArray raw(32, '\0');
        size_t size = 32;
        ::EVP_PKEY_get_raw_public_key(m_key, reinterpret_cast<unsigned char *>(raw.data()), &size);
        return raw.toBase64();
    }
    QByteArray sign(const QByteArray &text) const {
        QByteArray raw(64, '\0');
        size_t size = 64;
        EVP_MD_CTX *const context = ::EVP_MD_CTX_new();
        ::EVP_DigestSignInit(context, nullptr, nullptr, nullptr, m_key);
        ::EVP_DigestSign(context, reinterpret_cast<unsigned char *>(raw.data()), &size,
                         reinterpret_cast<const unsigned char *>(text.constData()),
                         size_t(text.size()));
        ::EVP_MD_CTX_free(context);
        return raw.toBase64() + '\n';
    }
    void serveSigned(const QByteArray &feed) {
        server.serve("/feed", feed);
        server.serve("/feed.sig", sign(feed));
    }
    /// Runs a check and returns its result. `meanwhile` is called while the check is in progress.
    QString check(const QUrl &feed, const std::function<void()> &meanwhile = {}) {
        UpdaterController updater({.feed = feed,
                                   .publicKey = " " + publicKey() + "\n",
                                   .version = QStringLiteral("1.2.0")},
                                  clock);
        const LogCapture log;
        updater.check();
        EXPECT_FALSE(updater.canCheck() && LogCapture::lines().isEmpty());
        if (meanwhile) {
            meanwhile();
        }
        waitUntil([&] { return updater.canCheck(); });
        logged = LogCapture::lines().join(QLatin1Char('\n')).toStdString();
        return updater.resultText();
    }

    /// Runs a check that fails and returns the reason that the user reads, which is also logged.
    std::string failure(const QUrl &feed, const std::function<void()> &meanwhile = {}) {
        const std::string result = check(feed, meanwhile).toStdString();
        const std::string before = "The check for updates failed: ";
        const std::string after = ". Your version stays as it is; you can try again later.";
        EXPECT_TRUE(result.starts_with(before) && result.ends_with(after)) << result;
        const std::string reason =
            result.substr(before.size(), result.size() - before.size() - after.size());
        EXPECT_THAT(logged,
                    HasSubstr("app.corvane.Corvane.Updater: Refusing update feed: " + reason));
        return reason;
    }

    TestClock clock;
    TestServer server;
    std::string logged;

  private:
    EVP_PKEY *m_key = ::EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519");
};

} // namespace

TEST_F(UpdaterControllerTest, ReportsTheVersionOfASignedFeed) {
    const std::pair<const char *, const char *> feeds[] = {
        {R"({"version": "1.10.0", "page": "https://a.example/get"})",
         "Corvane 1.10.0 is available. You have 1.2.0. Get it from https://a.example/get"},
        {R"({"version": "1.3", "page": "ftp://a.example"})",
         "Corvane 1.3 is available. You have 1.2.0."},
        {R"({"version": "1.2.0"})", "Corvane 1.2.0 is the newest version."},
        {R"({"version": "0.9"})", "Corvane 1.2.0 is the newest version."},
    };
    for (const auto &[feed, result] : feeds) {
        serveSigned(feed);
        EXPECT_EQ(check(server.at(QStringLiteral("/feed"))).toStdString(), result);
        EXPECT_EQ(logged, "");
    }
    EXPECT_THAT(server.requested.first(4), ElementsAre("/feed", "/feed.sig", "/feed", "/feed.sig"));
}

TEST_F(UpdaterControllerTest, RefusesAFeedWithAnInvalidSignatureOrContentAndSaysWhy) {
    const QByteArray feed = R"({"version": "9.0"})";
    for (const QByteArray &signature :
         {sign(R"({"version": "8.0"})"), sign(feed).left(40), QByteArray("%%%"), QByteArray()}) {
        server.serve("/feed", feed);
        server.serve("/feed.sig", signature);
        EXPECT_EQ(failure(server.at(QStringLiteral("/feed"))),
                  "the feed's signature doesn't match this build's key");
    }
    for (const char *const text : {"[]", "{", R"({"version": 9})", R"({"version": "9x"})"}) {
        serveSigned(text);
        EXPECT_THAT(failure(server.at(QStringLiteral("/feed"))), HasSubstr("the feed ")) << text;
    }
}

TEST_F(UpdaterControllerTest, RefusesADownloadBeyondItsLimitsAndSaysWhy) {
    serveSigned(R"({"version": "9.0"})");
    server.serve("/large", QByteArray(UpdateDownload::kSizeLimit + 1, ' '));
    server.redirect("/away", "http://a.example/feed");
    server.redirect("/round", "/round");
    server.redirect("/once", "/feed");
    server.responses["/once.sig"] = server.responses["/feed.sig"];
    const std::pair<QUrl, const char *> refused[] = {
        {server.at(QStringLiteral("/large")), "it is larger than 65536 bytes"},
        {server.at(QStringLiteral("/away")), "it redirects to http://a.example/feed"},
        {server.at(QStringLiteral("/round")), "it redirects more than 3 times"},
        {QUrl(QStringLiteral("http://a.example/feed")), "is not an https address"},
        {QUrl(QStringLiteral("file:///etc/passwd")), "is not an https address"},
        {QUrl(), "is not an https address"},
    };
    for (const auto &[address, reason] : refused) {
        EXPECT_THAT(failure(address), HasSubstr(reason));
    }
    EXPECT_THAT(failure(server.at(QStringLiteral("/silent")),
                        [&] { clock.advance(UpdateDownload::kTimeout); }),
                HasSubstr("it took too long"));
    EXPECT_FALSE(check(server.at(QStringLiteral("/once"))).isEmpty()) << "one redirect is allowed";
}
