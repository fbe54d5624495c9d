#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The text of an INI file and the values in its section General (and before any section), in the form that
/// QSettings writes: UTF-8, a quoted value where it has to be. Setting a value changes its own line alone;
/// comments, other keys and whatever else the text holds stay as they are. A plain value.
class IniDocument
{
public:
    explicit IniDocument(QByteArray text = {});

    const QByteArray &text() const { return m_text; }

    /// The value of a key, the last one where there are several; nothing when there is none, or when it is no
    /// single text. A value that begins with a brace is JSON that somebody wrote by hand, and is not decoded.
    std::optional<QString> value(QByteArrayView key) const;

    /// Replaces the value of the key, or adds the key at the end of the section.
    void setValue(QByteArrayView key, const QString &value);

private:
    /// A stretch of the text.
    struct Range {
        qsizetype begin;
        qsizetype end;
    };
    struct Place {
        std::optional<Range> line; ///< the key's line, without its end
        qsizetype sectionEnd = -1; ///< after the last line of the section that is not blank; -1 without one
    };
    Place find(QByteArrayView key) const;

    QByteArray m_text;
};
