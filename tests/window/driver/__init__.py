"""Drives the window of zelvreg as a user does, and reads the screen as a user reads it."""
