#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <optional>

/// The code page of setting files and card control files. On Windows the system's ANSI code page;
/// elsewhere Shift_JIS (CP932) unless chosen otherwise. ASCII reads and writes the same in all.
class TextEncoding
{
public:
    /// The encoding named (e.g. "CP932", "windows-1252", "UTF-8", "System"); check isValid().
    explicit TextEncoding(QString name);

    /// DQ480_ENCODING when set, else the platform's default.
    static TextEncoding platformDefault();

    const QString &name() const { return m_name; }
    bool isValid() const;

    QByteArray encode(QStringView text) const;

    /// The first character of the text that the code page cannot hold (it would come back from
    /// the file as another character, usually "?"); empty when the whole text fits.
    QString firstUnencodable(QStringView text) const;
    QString decode(QByteArrayView bytes) const;

    /// The first byte of `bytes` that does not come back as it was when the text is decoded and
    /// encoded again (a byte the code page has no character for, or one of two byte sequences for
    /// the same character); none when all of it does.
    std::optional<qsizetype> firstChangedByte(QByteArrayView bytes) const;

    /// The same, given the text the bytes were decoded to as part of a larger whole; when that
    /// text does not give the bytes back, the bytes are decoded alone to say where.
    std::optional<qsizetype> firstChangedByte(QByteArrayView bytes, QStringView decoded) const;

private:
    QString m_name;
    int m_systemCodePage; // the Windows code page the name stands for, looked up once; 0 for none
};
