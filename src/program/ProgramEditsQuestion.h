#pragma once

class MsgBox;
class SharedState;

/// What the program and step windows ask before they close: with program settings or steps not
/// yet applied, whether to throw them away. OK reverts the whole working copy (the way these
/// windows have always discarded); Cancel keeps the window. True when the window may close.
bool mayDiscardProgramEdits(SharedState &state, MsgBox &msgBox);
