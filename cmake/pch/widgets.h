// For rooms of widgets.
#pragma once

#include "cmake/pch/gui.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QWidget>
