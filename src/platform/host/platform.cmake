#The host machine needs the standard library and POSIX alone.
