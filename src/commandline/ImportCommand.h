#pragma once

#include "commandline/Command.h"

// The command that makes clips of ordinary files.

int RunImport(const CommandContext& context);
