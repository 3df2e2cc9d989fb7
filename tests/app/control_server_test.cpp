// The program's control socket against hostile clients: a line without an
// end, a line too long, bytes that are not UTF-8, a thousand clients at
// once, clients that vanish mid-line or say nothing. Each gets a clear
// answer or is dropped, the handlers see only well-formed requests, and
// the server goes on serving.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>
#include <dirent.h>
#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "app/control_socket.h"

namespace zirvel_test {
namespace {

using namespace std::chrono_literals;

// A client as any process could be: a plain Unix socket.
class RawClient {
public:
    explicit RawClient(const std::string& path) : fd_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        connected_ = connect(fd_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    ~RawClient() { close(fd_); }
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    bool Connected() const { return connected_; }
    // Sends all of `bytes` unless the server closes first; false then.
    bool Send(const std::string& bytes) {
        for (std::size_t sent = 0; sent < bytes.size();) {
            const ssize_t now = send(fd_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (now <= 0) return false;
            sent += static_cast<std::size_t>(now);
        }
        return true;
    }
    // What the server says until it closes the connection (or `timeout`);
    // "closed" is set when it did close.
    std::string Answer(std::chrono::milliseconds timeout, bool* closed = nullptr) {
        std::string text;
        const auto end = std::chrono::steady_clock::now() + timeout;
        while (std::chrono::steady_clock::now() < end) {
            pollfd ready{fd_, POLLIN, 0};
            if (poll(&ready, 1, 20) <= 0) continue;
            char buffer[256];
            const ssize_t got = recv(fd_, buffer, sizeof buffer, 0);
            if (got <= 0) {
                if (closed) *closed = true;
                return text;
            }
            text.append(buffer, static_cast<std::size_t>(got));
        }
        if (closed) *closed = false;
        return text;
    }

private:
    int fd_;
    bool connected_ = false;
};

int OpenDescriptors() {
    int count = 0;
    if (DIR* folder = opendir("/proc/self/fd")) {
        while (readdir(folder)) ++count;
        closedir(folder);
    }
    return count;
}

class ControlServerTest : public ::testing::Test {
protected:
    ControlServerTest()
        : path_(folder_.filePath(QStringLiteral("control"))),
          server_(path_,
                  zirvel::app::ControlHandlers{
                      [this](const QString& file) {
                          activated_.push_back(file);
                          return file == QStringLiteral("games.json");
                      },
                      [this](const QString& text) {
                          said_.push_back(text);
                          return text == QStringLiteral("pokaż siatkę");
                      }},
                  std::chrono::milliseconds(kRequestWaitMs)) {}

    // Runs the server's event loop while `client` runs on its own thread.
    template <typename Client>
    void Serve(Client client, std::chrono::milliseconds limit = 20s) {
        std::atomic<bool> done{false};
        std::thread thread([&] {
            client();
            done = true;
        });
        const auto end = std::chrono::steady_clock::now() + limit;
        while (!done && std::chrono::steady_clock::now() < end) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        thread.join();
        // Deferred deletions of the dropped clients.
        for (int round = 0; round < 5; ++round) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
        }
    }

    std::string Ask(const std::string& bytes) {
        std::string answer;
        Serve([&] {
            RawClient client(path_.toStdString());
            if (client.Connected() && client.Send(bytes)) answer = client.Answer(5s);
        });
        return answer;
    }

    static constexpr int kRequestWaitMs = 500;
    QTemporaryDir folder_;
    QString path_;
    std::vector<QString> activated_;
    std::vector<QString> said_;
    zirvel::app::ControlServer server_;
};

TEST_F(ControlServerTest, WellFormedRequestsAreAnswered) {
    ASSERT_TRUE(server_.Listening());
    EXPECT_EQ(Ask("activate games.json\n"), "1\n");
    EXPECT_EQ(Ask("activate empty.json\n"), "0\n");
    EXPECT_EQ(Ask("say pokaż siatkę\n"), "1\n");
    EXPECT_EQ(Ask("sing la la\n"), "0\n");
    EXPECT_EQ(Ask("say\n"), "0\n");
    EXPECT_EQ(activated_, (std::vector<QString>{"games.json", "empty.json"}));
    EXPECT_EQ(said_, (std::vector<QString>{QStringLiteral("pokaż siatkę")}));
}

TEST_F(ControlServerTest, SixtyFourMegabytesWithoutANewlineAreDroppedAndTheServerGoesOn) {
    bool closed = false;
    bool sentAll = true;
    Serve([&] {
        RawClient client(path_.toStdString());
        sentAll = client.Send(std::string(64 * 1024 * 1024, 'a'));
        client.Answer(5s, &closed);
    });
    EXPECT_FALSE(sentAll) << "the server read 64 MB of one request";
    EXPECT_TRUE(closed);
    EXPECT_TRUE(activated_.empty());
    EXPECT_TRUE(said_.empty());
    EXPECT_EQ(Ask("activate games.json\n"), "1\n");
}

TEST_F(ControlServerTest, ALineLongerThanAnyRequestIsDroppedUnread) {
    EXPECT_EQ(Ask("activate " + std::string(70 * 1024, 'x') + "\n"), "");
    EXPECT_TRUE(activated_.empty());
    EXPECT_EQ(Ask("activate games.json\n"), "1\n");
}

TEST_F(ControlServerTest, BytesThatAreNotUtf8AreRefusedWithoutReachingTheHandlers) {
    EXPECT_EQ(Ask("say poka\xBF si\xC3" "atk\xE9\n"), "0\n");
    EXPECT_EQ(Ask("activate \xFF\xFE.json\n"), "0\n");
    EXPECT_EQ(Ask("say abc\xDB\n"), "0\n");  // a sequence cut off by the line's end
    EXPECT_EQ(Ask(std::string("say a\0b\n", 8)), "0\n");  // a NUL is UTF-8, and matches nothing
    EXPECT_TRUE(activated_.empty());
    EXPECT_EQ(said_.size(), 1u);
}

TEST_F(ControlServerTest, AThousandClientsAtOnceAreEachAnswered) {
    constexpr int kClients = 1000;
    std::atomic<int> answered{0};
    Serve([&] {
        // Each says its line as it connects (a server gives a client a
        // while to speak, and a thousand take longer than that to connect);
        // all are connected before the first answer is read.
        std::vector<std::unique_ptr<RawClient>> clients;
        for (int i = 0; i < kClients; ++i) {
            clients.push_back(std::make_unique<RawClient>(path_.toStdString()));
            clients.back()->Send("say pokaż siatkę\n");
        }
        for (auto& client : clients) answered += client->Answer(5s) == "1\n";
    }, 60s);
    EXPECT_EQ(answered.load(), kClients);
    EXPECT_EQ(said_.size(), static_cast<std::size_t>(kClients));
}

TEST_F(ControlServerTest, ClientsThatLeaveMidLineOrSayNothingAreLetGo) {
    const int before = OpenDescriptors();
    Serve([&] {
        for (int i = 0; i < 50; ++i) {
            RawClient client(path_.toStdString());
            client.Send("activate games");  // and gone, mid-line
        }
    });
    bool closed = false;
    Serve([&] {
        std::vector<std::unique_ptr<RawClient>> silent;
        for (int i = 0; i < 50; ++i) silent.push_back(std::make_unique<RawClient>(path_.toStdString()));
        // Each is dropped once it has said nothing for the request wait.
        for (auto& client : silent) {
            client->Answer(std::chrono::milliseconds(kRequestWaitMs * 4), &closed);
            if (!closed) break;
        }
    });
    EXPECT_TRUE(closed) << "a silent client was kept";
    EXPECT_TRUE(activated_.empty());
    EXPECT_EQ(OpenDescriptors(), before) << "connections were not let go";
    EXPECT_EQ(Ask("activate games.json\n"), "1\n");
}

}  // namespace
}  // namespace zirvel_test

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
