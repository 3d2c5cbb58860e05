#pragma once

#include <QCoreApplication>
#include <QString>

/// The answer to every refused entry in every window.
inline QString incorrectValueMessage()
{
    return QCoreApplication::translate("OperatorMessages", "Incorrect value has been entered.");
}

/// Asked before a window closes with edits not yet applied.
inline QString contentsOfEditQuestion()
{
    return QCoreApplication::translate(
        "OperatorMessages", "Updating the contents of edit has not been continued. Does close it?");
}
