#pragma once

#include "commandline/Command.h"

// The commands that look for damage and put it right.

int RunCheck(const CommandContext& context);
int RunRepair(const CommandContext& context);
