#pragma once

class MsgBox;
class SharedState;

/// What the program and step windows ask before they close: with program settings or steps not
/// yet applied, whether to throw them away. OK reverts the whole working copy; Cancel keeps the
/// window. True when the window may close.
/// Kept on purpose: OK reverts every section, not only this window's, as these windows always did.
bool mayDiscardProgramEdits(SharedState &state, MsgBox &msgBox);
