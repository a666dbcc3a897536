#include "tests/hostapp/app/modules/TestModule.h"
