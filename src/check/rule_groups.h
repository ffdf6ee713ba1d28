// The groups of rules: each function adds what it finds in one module to the context's findings.
#pragma once

#include "check/code.h"
#include "check/context.h"

namespace declarium::check {

// What the language refuses.
void CheckCompiles(ModuleContext& module);
// Whether the DLL has the entry, in the Windows that must do.
void CheckEntries(const ModuleContext& module);
// What is passed and comes back.
void CheckFrames(const ModuleContext& module);
// Values of constants, sizes and places of records.
void CheckValues(ModuleContext& module, const Code& code);
// What 64-bit systems need; nothing for Visual Basic 6.0.
void CheckBits(ModuleContext& module, const Code& code);

// What could go, in the whole subject. `uses` counts what all modules use.
void CheckCleanUp(Context& context, const NameCounts& uses);

}  // namespace declarium::check
