#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

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

private:
    QString m_name;
};
