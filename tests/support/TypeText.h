#pragma once

#include <QCoreApplication>
#include <QKeyEvent>
#include <QString>
#include <QWidget>

/// Types the text into the widget one character at a time, as a keyboard with any layout would.
/// QTest::keyClicks only knows ASCII; this also types "é" or kanji.
inline void typeText(QWidget *widget, const QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype length = text[i].isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        const QString character = text.mid(i, length);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, character);
        QCoreApplication::sendEvent(widget, &press);
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, character);
        QCoreApplication::sendEvent(widget, &release);
        i += length - 1;
    }
}
