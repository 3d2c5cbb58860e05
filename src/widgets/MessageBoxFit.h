#pragma once

#include <QString>

class QMessageBox;

/// Gives the box `text` so that the box stays within its screen: a text too long or with too many
/// lines to show whole is cut short in the box (its end marked "…") and shown whole, up to a
/// limit, behind the box's details button, so that the buttons always stay in reach.
void setTextWithinScreen(QMessageBox &box, const QString &text);
