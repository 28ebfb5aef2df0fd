#include "ui/StoredClip.h"
