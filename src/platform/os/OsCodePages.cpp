#include "platform/os/OsCodePages.h"

#ifdef Q_OS_WIN

#include <windows.h>

int systemCodePageNamed(const QString &name)
{
    const QString lower = name.toLower();
    int number = 0;
    if (lower == QLatin1String("shift_jis") || lower == QLatin1String("shift-jis")
        || lower == QLatin1String("sjis") || lower == QLatin1String("ms932")
        || lower == QLatin1String("windows-31j"))
        number = 932;
    else if (lower.startsWith(QLatin1String("cp")))
        number = lower.mid(2).toInt();
    else if (lower.startsWith(QLatin1String("windows-")))
        number = lower.mid(8).toInt();
    return number > 0 && IsValidCodePage(UINT(number)) ? number : 0;
}

QByteArray encodeInSystemCodePage(int codePage, QStringView text)
{
    const auto *wide = reinterpret_cast<const wchar_t *>(text.utf16());
    const int size
        = WideCharToMultiByte(UINT(codePage), 0, wide, int(text.size()), nullptr, 0, nullptr, nullptr);
    QByteArray bytes(size, Qt::Uninitialized);
    WideCharToMultiByte(UINT(codePage), 0, wide, int(text.size()), bytes.data(), size, nullptr, nullptr);
    return bytes;
}

QString decodeInSystemCodePage(int codePage, QByteArrayView bytes)
{
    const int size = MultiByteToWideChar(UINT(codePage), 0, bytes.data(), int(bytes.size()), nullptr, 0);
    QString text(size, Qt::Uninitialized);
    MultiByteToWideChar(UINT(codePage), 0, bytes.data(), int(bytes.size()),
                        reinterpret_cast<wchar_t *>(text.data()), size);
    return text;
}

#else

int systemCodePageNamed(const QString &)
{
    return 0;
}

QByteArray encodeInSystemCodePage(int, QStringView)
{
    return QByteArray();
}

QString decodeInSystemCodePage(int, QByteArrayView)
{
    return QString();
}

#endif
