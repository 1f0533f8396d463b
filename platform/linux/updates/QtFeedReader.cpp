#include "platform/linux/updates/QtFeedReader.h"

#include <QByteArray>
#include <QDateTime>
#include <QXmlStreamReader>
#include <utility>

namespace ovin {
namespace {

/// Names of that namespace; it leads nowhere.
constexpr QLatin1String sparkle("http://www.andymatuschak.org/xml-namespaces/sparkle");
constexpr int deepest = 32;
constexpr std::size_t mostItems = 1000;

bool isSparkle(const QXmlStreamReader& xml) { return xml.namespaceUri() == sparkle; }

std::optional<qint64> number(QStringView text) {
    bool isNumber = false;
    const qint64 value = text.trimmed().toLongLong(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

/// The time of day comes with an offset, or a name for one, of which feeds use "GMT" and "UT" at most.
std::optional<std::chrono::seconds> date(QString text) {
    text = text.trimmed();
    for (const QLatin1String name : {QLatin1String(" GMT"), QLatin1String(" UTC"), QLatin1String(" UT")}) {
        if (text.endsWith(name)) text = text.chopped(name.size()) + QLatin1String(" +0000");
    }
    const QDateTime date = QDateTime::fromString(text, Qt::RFC2822Date);
    return date.isValid() ? std::optional(std::chrono::seconds(date.toSecsSinceEpoch())) : std::nullopt;
}

class Reading {
public:
    explicit Reading(const QByteArray& text) : xml_(text) {}

    std::optional<Feed> feed() {
        Feed feed;
        while (!xml_.atEnd()) {
            switch (xml_.readNext()) {
                case QXmlStreamReader::StartElement:
                    if (!enter(feed)) return std::nullopt;
                    break;
                case QXmlStreamReader::EndElement:
                    --depth_;
                    break;
                case QXmlStreamReader::DTD:
                case QXmlStreamReader::EntityReference:
                    return std::nullopt;
                default:
                    break;
            }
        }
        if (xml_.hasError() || !isFeed_) return std::nullopt;
        return feed;
    }

private:
    /// Goes into what has begun, or reads it as a whole. False for what no feed has.
    bool enter(Feed& feed) {
        const bool isPlain = xml_.namespaceUri().isEmpty();
        const QStringView name = xml_.name();
        if (depth_ == 0) {
            isFeed_ = isPlain && name == QLatin1String("rss");
            if (!isFeed_) return false;
        }
        if (depth_ == 2 && isPlain && name == QLatin1String("item")) {
            if (feed.size() == mostItems) return false;
            feed.push_back(item());
            return !xml_.hasError();
        }
        const bool isOnTheWay = depth_ == 0 || (depth_ == 1 && isPlain && name == QLatin1String("channel"));
        if (!isOnTheWay) return skip();
        ++depth_;
        return true;
    }

    FeedItem item() {
        FeedItem item;
        while (xml_.readNextStartElement()) {
            if (isSparkle(xml_)) {
                readSparkle(item);
            } else if (xml_.namespaceUri().isEmpty()) {
                readPlain(item);
            } else {
                (void)skip();
            }
        }
        return item;
    }

    void readPlain(FeedItem& item) {
        const QStringView name = xml_.name();
        if (name == QLatin1String("enclosure")) return readEnclosure(item);
        if (name == QLatin1String("pubDate")) return void(item.published = date(text()));
        if (name != QLatin1String("description")) return void(skip());
        item.areNotesPlain = xml_.attributes().value(sparkle, QLatin1String("format")) == QLatin1String("plain-text");
        item.notes = text().toStdString();
    }

    void readSparkle(FeedItem& item) {
        const QString name = xml_.name().toString();
        if (name == QLatin1String("criticalUpdate")) {
            item.isCritical = true;
            item.criticalBefore = xml_.attributes().value(sparkle, QLatin1String("version")).toString().toStdString();
            return void(skip());
        }
        if (name == QLatin1String("phasedRolloutInterval")) {
            if (const auto seconds = number(text())) item.phasedRolloutInterval = std::chrono::seconds(*seconds);
            return;
        }
        std::string* const field = textField(item, name);
        if (field == nullptr) return void(skip());
        *field = text().trimmed().toStdString();
    }

    static std::string* textField(FeedItem& item, const QString& name) {
        if (name == QLatin1String("version")) return &item.version;
        if (name == QLatin1String("shortVersionString")) return &item.shortVersion;
        if (name == QLatin1String("minimumSystemVersion")) return &item.minimumSystemVersion;
        if (name == QLatin1String("maximumSystemVersion")) return &item.maximumSystemVersion;
        if (name == QLatin1String("channel")) return &item.channel;
        if (name == QLatin1String("releaseNotesLink")) return &item.notesLink;
        return nullptr;
    }

    /// Versions may stand here as well; elements of their own win, in whichever order.
    void readEnclosure(FeedItem& item) {
        const QXmlStreamAttributes attributes = xml_.attributes();
        const auto own = [&](const char* name) {
            return attributes.value(sparkle, QLatin1String(name)).trimmed().toString().toStdString();
        };
        item.url = attributes.value(QLatin1String("url")).trimmed().toString().toStdString();
        const auto length = number(attributes.value(QLatin1String("length")));
        if (length && *length >= 0) item.length = static_cast<std::uint64_t>(*length);
        item.edSignature = own("edSignature");
        item.operatingSystem = own("os");
        if (item.version.empty()) item.version = own("version");
        if (item.shortVersion.empty()) item.shortVersion = own("shortVersionString");
        (void)skip();
    }

    QString text() {
        QString text;
        (void)skip(&text);
        return text;
    }

    /// Leaves out an element with all that is in it but the text; false where it is too deep or not well-formed.
    bool skip(QString* text = nullptr) {
        for (int depth = 1; depth > 0;) {
            const auto token = xml_.readNext();
            if (token == QXmlStreamReader::Characters && text != nullptr) *text += xml_.text();
            if (token == QXmlStreamReader::StartElement) ++depth;
            if (token == QXmlStreamReader::EndElement) --depth;
            if (depth > deepest) xml_.raiseError();
            if (xml_.hasError()) return false;
        }
        return true;
    }

    QXmlStreamReader xml_;
    int depth_ = 0;
    bool isFeed_ = false;
};

}  // namespace

std::optional<Feed> QtFeedReader::read(std::string_view text) const {
    const auto bytes = QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
    return Reading(bytes).feed();
}

}  // namespace ovin
