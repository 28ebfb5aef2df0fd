#pragma once

#include "commandline/Command.h"

// The command that looks for a text.

int RunSearch(const CommandContext& context);
