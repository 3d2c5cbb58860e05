#pragma once

#include "setting/CardWrite.h"

class MsgBox;
class SharedState;

/// Writes an empty project to a freshly formatted card as its control file: every program named
/// P001-P064 with option word 0x2F01, no sentences, no steps. The open project in Setting is put
/// back exactly as it was afterwards, whatever happens; SettingBuffer is never touched.
bool WriteInitialControlFile(SharedState &state, MsgBox &msgBox, const CardWriteHooks &hooks);
