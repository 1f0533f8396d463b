#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

namespace ovin {

/// A web server on this machine that the event loop of the test runs: each text has an address.
class LoopbackServer {
public:
    LoopbackServer() {
        server_.listen(QHostAddress::LocalHost);
        QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { serve(server_.nextPendingConnection()); });
    }

    std::string offer(const std::string& text) {
        texts_.push_back(text);
        return "http://127.0.0.1:" + std::to_string(server_.serverPort()) + "/" + std::to_string(texts_.size() - 1);
    }

private:
    void serve(QTcpSocket* client) {
        QObject::connect(client, &QTcpSocket::readyRead, client, [this, client] {
            if (!client->peek(client->bytesAvailable()).contains("\r\n\r\n")) return;
            client->write(answer(client->readAll().toStdString()));
            client->disconnectFromHost();
        });
        QObject::connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
    }

    /// To "GET /3 HTTP/1.1" and so on.
    [[nodiscard]] QByteArray answer(const std::string& request) const {
        const std::size_t slash = request.find('/');
        const auto number = static_cast<std::size_t>(std::atoi(request.c_str() + slash + 1));
        if (number >= texts_.size()) return "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
        const std::string& text = texts_[number];
        const std::string head = "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: ";
        return QByteArray::fromStdString(head + std::to_string(text.size()) + "\r\n\r\n" + text);
    }

    std::vector<std::string> texts_;
    QTcpServer server_;
};

}  // namespace ovin
