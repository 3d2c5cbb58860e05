#pragma once

class DriveSource;
class FileDialogs;
class MsgBox;
class SharedState;

/// What every window is handed: the shared state, the two ways of asking the operator, and the
/// PC's drives.
struct AppContext
{
    SharedState &state;
    MsgBox &msgBox;
    FileDialogs &fileDialogs;
    const DriveSource &drives;
};
