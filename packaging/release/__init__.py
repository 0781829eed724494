"""Makes the packages that users install, out of what has been built."""
