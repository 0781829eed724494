"""One file for each package."""
