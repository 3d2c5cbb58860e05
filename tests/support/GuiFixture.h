#pragma once

#include "AppContext.h"
#include "ScriptedFileDialogs.h"
#include "ScriptedMsgBox.h"
#include "TestProjects.h"

#include <QTemporaryDir>

/// The two questions asked before unapplied or unsaved work is thrown away.
inline const QString ContentsQuestion
    = QStringLiteral("Updating the contents of edit has not been continued. Does close it?");
inline const QString SettingQuestion
    = QStringLiteral("Updating the setting data has not been continued. Does close it?");

/// A fresh program folder, shared state and scripted operator for one window test.
struct GuiFixture
{
    QTemporaryDir home;
    std::unique_ptr<SharedState> state = makeTestState(home.path());
    ScriptedMsgBox msgBox;
    ScriptedFileDialogs fileDialogs;
    AppContext context {*state, msgBox, fileDialogs};
};
