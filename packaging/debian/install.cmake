# What Debian's package installs.
