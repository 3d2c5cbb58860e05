#pragma once

#include <QIcon>

class QStyle;

/// Icons of the main toolbar, from the desktop's theme where it has them, else drawn here so that
/// every button has a clear picture on any desktop.
namespace ToolbarIcons {
QIcon newFile(const QStyle *style);
QIcon open(const QStyle *style);
QIcon save(const QStyle *style);
QIcon print();
QIcon help();
/// The program's own icon: a loudspeaker sending out a message.
QIcon application();
} // namespace ToolbarIcons
