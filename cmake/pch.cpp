// Compiled once for the precompiled header that every folder shares.
