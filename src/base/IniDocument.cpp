#include "base/IniDocument.h"

namespace
{

constexpr QByteArrayView ByteArrayOpening = "@ByteArray(";

/// What an escaped character stands for; the characters that are left stand for themselves.
char unescaped(char escape)
{
    switch (escape) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        return escape;
    }
}

/// The value without quotes, escapes and the comment behind it; nothing when it is a list.
std::optional<QByteArray> unquoted(QByteArrayView written)
{
    QByteArray plain;
    bool isQuoted = false;
    for (qsizetype i = 0; i < written.size(); ++i) {
        const char c = written[i];
        if (c == '"') {
            isQuoted = !isQuoted;
        } else if (c == '\\' && i + 1 < written.size()) {
            plain += unescaped(written[++i]);
        } else if (!isQuoted && c == ';') {
            return plain.trimmed();
        } else if (!isQuoted && c == ',') {
            return std::nullopt;
        } else {
            plain += c;
        }
    }
    return plain;
}

std::optional<QString> decoded(QByteArrayView written)
{
    if (written.startsWith('{'))
        return QString::fromUtf8(written);
    const auto plain = unquoted(written);
    if (!plain)
        return std::nullopt;
    if (plain->startsWith(ByteArrayOpening) && plain->endsWith(')'))
        return QString::fromUtf8(QByteArrayView(*plain).sliced(ByteArrayOpening.size()).chopped(1));
    if (plain->startsWith("@@"))
        return QString::fromUtf8(QByteArrayView(*plain).sliced(1));
    // A value of one of the toolkit's own kinds.
    if (plain->startsWith('@'))
        return std::nullopt;
    return QString::fromUtf8(*plain);
}

QByteArray encoded(const QString &value)
{
    QByteArray written;
    for (const char c : value.toUtf8()) {
        switch (c) {
        case '\n':
            written += "\\n";
            break;
        case '\r':
            written += "\\r";
            break;
        case '\t':
            written += "\\t";
            break;
        case '"':
        case '\\':
            written += '\\';
            [[fallthrough]];
        default:
            written += c;
        }
    }
    if (written.startsWith('@'))
        written.prepend('@');
    const bool isPlain = value.trimmed() == value && written.indexOf('\\') < 0 && written.indexOf(',') < 0 &&
        written.indexOf(';') < 0 && written.indexOf('=') < 0 && !written.startsWith('{');
    return isPlain ? written : '"' + written + '"';
}

} // namespace

IniDocument::IniDocument(QByteArray text)
    : m_text(std::move(text))
{
}

IniDocument::Place IniDocument::find(QByteArrayView key) const
{
    Place place;
    bool isInSection = true;
    for (qsizetype begin = 0; begin < m_text.size();) {
        const qsizetype feed = m_text.indexOf('\n', begin);
        const qsizetype end = feed < 0 ? m_text.size() : feed;
        const QByteArrayView line = QByteArrayView(m_text).sliced(begin, end - begin).trimmed();
        if (line.startsWith('[') && line.endsWith(']')) {
            isInSection = line == QByteArrayView("[General]");
            if (isInSection)
                place.sectionEnd = end;
        } else if (isInSection && !line.isEmpty()) {
            if (place.sectionEnd >= 0)
                place.sectionEnd = end;
            const qsizetype sign = line.indexOf('=');
            if (sign > 0 && line.first(sign).trimmed() == key)
                place.line = Range{begin, end};
        }
        begin = end + 1;
    }
    return place;
}

std::optional<QString> IniDocument::value(QByteArrayView key) const
{
    const Place place = find(key);
    if (!place.line)
        return std::nullopt;
    const auto line = QByteArrayView(m_text).sliced(place.line->begin, place.line->end - place.line->begin);
    return decoded(line.sliced(line.indexOf('=') + 1).trimmed());
}

void IniDocument::setValue(QByteArrayView key, const QString &value)
{
    const QByteArray line = key.toByteArray() + '=' + encoded(value);
    const Place place = find(key);
    if (place.line) {
        m_text.replace(place.line->begin, place.line->end - place.line->begin, line);
    } else if (place.sectionEnd >= 0) {
        m_text.insert(place.sectionEnd, '\n' + line);
    } else {
        if (!m_text.isEmpty() && !m_text.endsWith('\n'))
            m_text += '\n';
        m_text += "[General]\n" + line + '\n';
    }
    if (!m_text.endsWith('\n'))
        m_text += '\n';
}
