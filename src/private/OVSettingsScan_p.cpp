#include "private/OVSettingsScan_p.h"

#include <QColor>
#include <QMetaType>
#include <QStringList>
#include <QTextCodec>
#include <QTimeZone>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace OVSettingsScan {

namespace {

// Deeper values are refused: QDataStream reads nested lists and maps recursively.
constexpr int kMaxDepth = 32;
// The length QDataStream writes for a null string or byte array.
constexpr quint32 kNull = 0xffffffffu;

// Walks one QVariant as QVariant::load reads it from a QDataStream, without building anything.
class VariantWalk
{
public:
    explicit VariantWalk(const QByteArray& bytes)
        : m_data(reinterpret_cast<const uchar*>(bytes.constData()))
        , m_left(bytes.size())
    {}

    qint64 Left() const { return m_left; }

    // A QVariant as QSettings writes it after "@Variant(": stream version Qt_4_0, which numbers
    // the types as Qt 4 did and has no null flag.
    bool Variant(int depth)
    {
        quint32 type = 0;
        if (depth > kMaxDepth || !Number(&type, 4))
            return false;
        if (type == 127)
            type = QMetaType::User;
        else if (type >= 128 && type != QMetaType::User)
            type -= 97;
        else if (type == 75)
            type = QMetaType::QSizePolicy;
        else if (type > 75 && type <= 86)
            type -= 1;
        if (type != QMetaType::User)
            return Value(type, depth);
        // A type of its own, by name; QMetaType looks the name up as a C string.
        QByteArray name;
        return Bytes(&name) && std::strcmp(name.constData(), "QUuid") == 0 && Skip(16);
    }

    // The QVariant QSettings writes after "@DateTime(": stream version Qt_5_6, a QDateTime only.
    bool DateTimeVariant()
    {
        quint32 type = 0;
        quint32 timing = 0;
        // The type, the null flag, the day (64 bits) and the time of day, then how the time counts
        // (local, UTC, an offset or a zone).
        if (!Number(&type, 4) || type != QMetaType::QDateTime || !Skip(1 + 8 + 4) || !Number(&timing, 1))
            return false;
        switch (timing) {
        case Qt::LocalTime:
        case Qt::UTC:
            return true;
        case Qt::OffsetFromUTC:
            return Skip(4);
        case Qt::TimeZone:
            return Zone();
        default:
            return false;
        }
    }

private:
    bool Skip(qint64 bytes)
    {
        if (bytes > m_left)
            return false;
        m_data += bytes;
        m_left -= bytes;
        return true;
    }

    // A big-endian unsigned number of 1 to 4 bytes.
    bool Number(quint32* value, int bytes)
    {
        if (bytes > m_left)
            return false;
        *value = 0;
        for (int i = 0; i < bytes; ++i)
            *value = (*value << 8) | m_data[i];
        return Skip(bytes);
    }

    bool String(QString* text = nullptr)
    {
        quint32 bytes = 0;
        if (!Number(&bytes, 4))
            return false;
        if (bytes == kNull)
            return true;
        if (bytes % 2 != 0 || bytes > m_left)
            return false;
        if (text) {
            text->resize(int(bytes / 2));
            for (int i = 0; i < text->size(); ++i)
                (*text)[i] = QChar(ushort((m_data[2 * i] << 8) | m_data[2 * i + 1]));
        }
        return Skip(bytes);
    }

    bool Bytes(QByteArray* bytes = nullptr)
    {
        quint32 length = 0;
        if (!Number(&length, 4))
            return false;
        if (length == kNull)
            return true;
        if (length > m_left)
            return false;
        if (bytes)
            *bytes = QByteArray(reinterpret_cast<const char*>(m_data), int(length));
        return Skip(length);
    }

    // A count, then that many items, each of which takes at least 4 bytes: the loop ends
    // within the bytes present, and so does what QDataStream reserves for the count.
    template <typename Item>
    bool Items(Item item)
    {
        quint32 count = 0;
        if (!Number(&count, 4) || count > m_left / 4)
            return false;
        for (quint32 i = 0; i < count; ++i) {
            if (!item())
                return false;
        }
        return true;
    }

    // A time zone by id, or a zone of its own ("OffsetFromUtc", then its id, offset, name,
    // abbreviation, country and comment). Qt looks an id up as a file name, even outside the
    // zone database, so only ids the zone database knows pass; an empty one is the system zone.
    bool Zone()
    {
        QString id;
        if (!String(&id))
            return false;
        if (id == QLatin1String("OffsetFromUtc"))
            return String(&id) && KnownZone(id) && Skip(4) && String() && String() && Skip(4) && String();
        return KnownZone(id);
    }

    static bool KnownZone(const QString& id)
    {
        return id.isEmpty() || QTimeZone::isTimeZoneIdAvailable(id.toUtf8());
    }

    // A value of the given type as QMetaType::load reads it at stream version Qt_4_0.
    bool Value(quint32 type, int depth)
    {
        switch (type) {
        case QMetaType::UnknownType: // an invalid QVariant, followed by an empty string
        case QMetaType::QString:
            return String();
        case QMetaType::QByteArray:
        case QMetaType::QUrl:
            return Bytes();
        case QMetaType::Bool:
        case QMetaType::Char:
        case QMetaType::SChar:
        case QMetaType::UChar:
            return Skip(1);
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::QChar:
            return Skip(2);
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Float:
        case QMetaType::QDate:
        case QMetaType::QTime:
            return Skip(4);
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Long:
        case QMetaType::ULong:
        case QMetaType::Double:
        case QMetaType::QSize:
        case QMetaType::QPoint:
            return Skip(8);
        case QMetaType::QDateTime: // date, time and how the time counts
            return Skip(9);
        case QMetaType::QRect:
        case QMetaType::QLine:
        case QMetaType::QSizeF:
        case QMetaType::QPointF:
            return Skip(16);
        case QMetaType::QRectF:
        case QMetaType::QLineF:
            return Skip(32);
        case QMetaType::QColor: {
            // The model, then alpha, three components and padding of 16 bits each. Qt takes the
            // model without checking it, and a QColor of a model it does not know cannot even
            // be copied safely.
            quint32 model = 0;
            return Number(&model, 1) && qint8(model) >= QColor::Invalid &&
                   qint8(model) <= QColor::ExtendedRgb && Skip(10);
        }
        case QMetaType::QStringList:
            return Items([this] { return String(); });
        case QMetaType::QByteArrayList:
            return Items([this] { return Bytes(); });
        case QMetaType::QVariantList:
            return Items([this, depth] { return Variant(depth + 1); });
        case QMetaType::QVariantMap:
        case QMetaType::QVariantHash:
            return Items([this, depth] { return String() && Variant(depth + 1); });
        default:
            return false;
        }
    }

    const uchar* m_data;
    qint64 m_left;
};

// The value of an ASCII hexadecimal digit, or -1.
int HexDigit(char ch)
{
    if (ch >= '0' && ch <= '9')
        return ch - '0';
    if (ch >= 'a' && ch <= 'f')
        return ch - 'a' + 10;
    if (ch >= 'A' && ch <= 'F')
        return ch - 'A' + 10;
    return -1;
}

// The value text of a line, [from, to) of text, unescaped as QSettings does: quotes, escapes
// (\n, \x41, \101, ...), a backslash before a line end continuing the line, and unquoted commas
// making a list. Runs of plain bytes are Latin-1, or go through codec when the file starts with
// a UTF-8 byte order mark. Returns whether the value is a list (then in *list).
bool Unescape(const QByteArray& text, int from, int to, QTextCodec* codec, QString* result, QStringList* list)
{
    static const char escapes[][2] = {{'a', '\a'}, {'b', '\b'},  {'f', '\f'}, {'n', '\n'},
                                      {'r', '\r'}, {'t', '\t'},  {'v', '\v'}, {'"', '"'},
                                      {'?', '?'},  {'\'', '\''}, {'\\', '\\'}};
    enum State
    {
        SkipSpaces,
        Normal,
        HexEscape,
        OctEscape,
        End
    };
    bool isList = false;
    bool inQuotes = false;
    bool quoted = false;
    uint escape = 0;
    int chopLimit = 0;
    int i = from;
    State state = SkipSpaces;
    // Trailing blanks of an unquoted value are dropped, back to chopLimit.
    const auto chop = [&] {
        while (result->size() > chopLimit &&
               (result->endsWith(QLatin1Char(' ')) || result->endsWith(QLatin1Char('\t'))))
            result->chop(1);
    };
    while (state != End) {
        switch (state) {
        case SkipSpaces:
            while (i < to && (text.at(i) == ' ' || text.at(i) == '\t'))
                ++i;
            state = Normal;
            break;
        case Normal: {
            chopLimit = result->size();
            bool reenter = false;
            while (i < to && !reenter) {
                const char ch = text.at(i);
                if (ch == '\\') {
                    if (++i >= to) {
                        state = End;
                        break;
                    }
                    const char code = text.at(i++);
                    const auto simple = std::find_if(std::begin(escapes), std::end(escapes),
                                                     [code](const char* e) { return e[0] == code; });
                    if (simple != std::end(escapes)) {
                        *result += QLatin1Char((*simple)[1]);
                        reenter = true;
                        break;
                    }
                    if (code == 'x') {
                        escape = 0;
                        if (i >= to) {
                            state = End;
                            break;
                        }
                        if (HexDigit(text.at(i)) >= 0) {
                            state = HexEscape;
                            reenter = true;
                            break;
                        }
                    } else if (code >= '0' && code <= '7') {
                        escape = uint(code - '0');
                        state = OctEscape;
                        reenter = true;
                        break;
                    } else if ((code == '\n' || code == '\r') && i < to) {
                        const char next = text.at(i);
                        if ((next == '\n' || next == '\r') && next != code)
                            ++i;
                    }
                    // Any other escaped character is dropped.
                    chopLimit = result->size();
                } else if (ch == '"') {
                    ++i;
                    quoted = true;
                    inQuotes = !inQuotes;
                    if (!inQuotes) {
                        state = SkipSpaces;
                        reenter = true;
                    }
                } else if (ch == ',' && !inQuotes) {
                    if (!quoted)
                        chop();
                    if (!isList) {
                        isList = true;
                        list->clear();
                    }
                    list->append(*result);
                    result->clear();
                    quoted = false;
                    ++i;
                    state = SkipSpaces;
                    reenter = true;
                } else {
                    int j = i + 1;
                    while (j < to && text.at(j) != '\\' && text.at(j) != '"' && text.at(j) != ',')
                        ++j;
                    *result += codec ? codec->toUnicode(text.constData() + i, j - i)
                                     : QString::fromLatin1(text.constData() + i, j - i);
                    i = j;
                }
            }
            if (state == Normal && !reenter) {
                if (!quoted)
                    chop();
                state = End;
            }
            break;
        }
        case HexEscape:
        case OctEscape: {
            const uint base = state == HexEscape ? 16 : 8;
            const int digit = i < to ? HexDigit(text.at(i)) : -1;
            if (digit >= 0 && uint(digit) < base) {
                escape = escape * base + uint(digit);
                ++i;
            } else {
                // QChar keeps the low 16 bits, as Qt's own unescaping does.
                *result += QChar(ushort(escape & 0xffffu));
                state = i < to ? Normal : End;
            }
            break;
        }
        case End:
            break;
        }
    }
    if (isList)
        list->append(*result);
    return isList;
}

// Whether QSettings decodes the value text [from, to) of text safely, with the given codec.
bool IsSafeText(const QByteArray& text, int from, int to, QTextCodec* codec)
{
    QString value;
    QStringList list;
    // A list is decoded element by element; a value QSettings would decode is "@..." either way.
    if (!Unescape(text, from, to, codec, &value, &list))
        return IsSafeValue(value);
    return std::all_of(list.cbegin(), list.cend(), IsSafeValue);
}

// One logical line from *pos, as QSettings splits the text: leading blanks and line ends are
// skipped, a line runs on past line ends inside quotes and after a backslash, and an unquoted
// ';' ends it (a ';' at its start makes the rest of the physical line a comment, skipped). False
// at the end of the text. *equals is the first '=' outside quotes, or -1.
bool ReadLine(const QByteArray& text, int* pos, int* start, int* length, int* equals)
{
    const auto space = [](char ch) { return ch == ' ' || ch == '\t' || ch == '\n' || ch == '\r'; };
    const int size = text.size();
    bool inQuotes = false;
    *equals = -1;
    *start = *pos;
    while (*start < size && space(text.at(*start)))
        ++*start;
    int i = *start;
    while (i < size) {
        const char ch = text.at(i++);
        if (ch == '=') {
            if (!inQuotes && *equals == -1)
                *equals = i - 1;
        } else if (ch == '\n' || ch == '\r') {
            if (i == *start + 1) {
                ++*start;
            } else if (!inQuotes) {
                --i;
                break;
            }
        } else if (ch == '\\') {
            if (i < size) {
                const char next = text.at(i++);
                if (i < size &&
                    ((next == '\n' && text.at(i) == '\r') || (next == '\r' && text.at(i) == '\n')))
                    ++i;
            }
        } else if (ch == '"') {
            inQuotes = !inQuotes;
        } else if (ch == ';') {
            if (i == *start + 1) {
                while (i < size && text.at(i) != '\n' && text.at(i) != '\r')
                    ++i;
                while (i < size && space(text.at(i)))
                    ++i;
                *start = i;
            } else if (!inQuotes) {
                --i;
                break;
            }
        }
    }
    *pos = i;
    *length = i - *start;
    return *length > 0;
}

} // namespace

QVector<Damage> Find(const QByteArray& text)
{
    QVector<Damage> damages;
    int pos = 0;
    // After a byte order mark QSettings reads plain text as UTF-8, but only while it is the
    // QSettings that read the file: another one later parsing the same cached text reads it
    // as Latin-1. Both must be safe.
    QTextCodec* utf8 = nullptr;
    if (text.startsWith("\xef\xbb\xbf")) {
        utf8 = QTextCodec::codecForName("UTF-8");
        pos = 3;
    }
    int start = 0;
    int length = 0;
    int equals = -1;
    while (ReadLine(text, &pos, &start, &length, &equals)) {
        const int end = start + length;
        if (text.at(start) == '[') {
            if (!std::memchr(text.constData() + start, ']', size_t(length)))
                damages.append(
                    {start, length, text.mid(start, length) + ']', text.mid(start + 1, length - 1), true});
            continue;
        }
        if (equals < 0 || (IsSafeText(text, equals + 1, end, nullptr) &&
                           (!utf8 || IsSafeText(text, equals + 1, end, utf8))))
            continue;
        int keyEnd = equals;
        while (keyEnd > start && (text.at(keyEnd - 1) == ' ' || text.at(keyEnd - 1) == '\t'))
            --keyEnd;
        damages.append({start, length, QByteArray(), text.mid(start, keyEnd - start), false});
    }
    return damages;
}

QByteArray Repaired(const QByteArray& text, const QVector<Damage>& damages)
{
    QByteArray repaired;
    repaired.reserve(text.size() + damages.size());
    int from = 0;
    for (const Damage& damage : damages) {
        repaired += text.mid(from, damage.start - from) + damage.replacement;
        from = damage.start + damage.length;
    }
    return repaired + text.mid(from);
}

bool IsSafeValue(const QString& value)
{
    if (!value.startsWith(QLatin1Char('@')) || !value.endsWith(QLatin1Char(')')))
        return true;
    // Qt asserts that these hold no other closing parenthesis.
    for (const char* prefix : {"@Rect(", "@Size(", "@Point("}) {
        if (value.startsWith(QLatin1String(prefix)))
            return value.indexOf(QLatin1Char(')')) == value.size() - 1;
    }
    const bool variant = value.startsWith(QLatin1String("@Variant("));
    if (!variant && !value.startsWith(QLatin1String("@DateTime(")))
        return true;
    // QSettings streams the text after the opening parenthesis, the closing one included, as
    // Latin-1; the value must end just before that parenthesis.
    const QByteArray bytes = value.midRef(variant ? 9 : 10).toLatin1();
    VariantWalk walk(bytes);
    return (variant ? walk.Variant(0) : walk.DateTimeVariant()) && walk.Left() == 1;
}

} // namespace OVSettingsScan
