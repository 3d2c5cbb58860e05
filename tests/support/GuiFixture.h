#pragma once

#include "support/FakeDriveSource.h"
#include "support/ScriptedFileDialogs.h"
#include "support/ScriptedMsgBox.h"
#include "support/TestProjects.h"
#include "widgets/AppContext.h"

#include <QTemporaryDir>
#include <QWidget>

/// The two questions asked before unapplied or unsaved work is thrown away.
inline const QString ContentsQuestion
    = QStringLiteral("Updating the contents of edit has not been continued. Does close it?");
inline const QString SettingQuestion
    = QStringLiteral("Updating the setting data has not been continued. Does close it?");

/// A window's control by its object name; a missing control ends the test run at once.
template<typename T>
T *findControl(const QWidget *window, const QString &name)
{
    T *found = window->findChild<T *>(name);
    if (!found)
        qFatal("no control %s", qPrintable(name));
    return found;
}

/// A fresh program folder, shared state and scripted operator for one window test.
struct GuiFixture
{
    QTemporaryDir home;
    std::unique_ptr<SharedState> state = makeTestState(home.path());
    ScriptedMsgBox msgBox;
    ScriptedFileDialogs fileDialogs;
    FakeDriveSource drives;
    AppContext context {*state, msgBox, fileDialogs, drives};
};
