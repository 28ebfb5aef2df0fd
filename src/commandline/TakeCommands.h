#pragma once

#include "commandline/Command.h"

// The commands that write clips as ordinary files.

int RunExtract(const CommandContext& context);
int RunExport(const CommandContext& context);
