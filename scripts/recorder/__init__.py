"""Records what real programs write to a terminal; started by scripts/record-programs."""
