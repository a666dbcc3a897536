// Found before the toolkit's own by rooms that stand below such things; cmake/PlotixRoom.cmake says which.
#error "this room may not know printers"
