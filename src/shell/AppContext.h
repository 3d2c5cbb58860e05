#pragma once

class FileDialogs;
class MsgBox;
class SharedState;

/// What every window is handed: the shared state and the two ways of asking the operator.
struct AppContext
{
    SharedState &state;
    MsgBox &msgBox;
    FileDialogs &fileDialogs;
};
