# What lands on a machine: libraries, headers, find_package and pkg-config files.
