#include "tests/hostapp/site/modules/TestModule.h"
