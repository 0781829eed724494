"""One story of a user in each file: `tell(scene)` acts and expects."""
