#pragma once

#include <QString>

/// The version text shown by the splash window, the about box and --version.
inline QString appVersionText()
{
    return QStringLiteral("1.01");
}
