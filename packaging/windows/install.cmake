# What goes beside the program on Windows: the portable folder, and what the installer installs.
