#pragma once

#include "commandline/Command.h"

// The commands that show a tree and a clip.

int RunList(const CommandContext& context);
int RunShow(const CommandContext& context);
