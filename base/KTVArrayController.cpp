// The controller is a template; its change signals live here, in the one library that every room shares.
#include "base/KTVArrayController.h"
