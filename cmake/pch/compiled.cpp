// Compiled once for each of the precompiled headers, which the rooms share.
