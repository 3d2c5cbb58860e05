#pragma once

#include "AppContext.h"
#include "ScriptedFileDialogs.h"
#include "ScriptedMsgBox.h"
#include "TestProjects.h"

#include <QTemporaryDir>

/// A fresh program folder, shared state and scripted operator for one window test.
struct GuiFixture
{
    QTemporaryDir home;
    std::unique_ptr<SharedState> state = makeTestState(home.path());
    ScriptedMsgBox msgBox;
    ScriptedFileDialogs fileDialogs;
    AppContext context {*state, msgBox, fileDialogs};
};
