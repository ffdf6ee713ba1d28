// The groups of rules: each function adds what it finds in one module to the context's findings.
#pragma once

#include <deque>

#include "check/context.h"
#include "check/name_counts.h"
#include "vb/code.h"

namespace declarium::check {

// What the language refuses.
void CheckCompiles(ModuleContext& module);
// Whether the DLL has the entry, in the Windows that must do.
void CheckEntries(const ModuleContext& module);
// What is passed and comes back.
void CheckFrames(const ModuleContext& module);
// Values of constants, sizes and places of records.
void CheckValues(ModuleContext& module, const vb::Code& code);
// What 64-bit systems need; nothing for Visual Basic 6.0.
void CheckBits(ModuleContext& module, const vb::Code& code);

// What could go, in all modules of the subject. `uses` counts what they use.
void CheckCleanUp(const std::deque<ModuleContext>& modules, const NameCounts& uses);

}  // namespace declarium::check
