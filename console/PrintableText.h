// The console's way to the texts that a terminal may be shown.
#pragma once

#include "text/PrintableText.h"
