// For the tests.
#pragma once

#include "cmake/pch/widgets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
