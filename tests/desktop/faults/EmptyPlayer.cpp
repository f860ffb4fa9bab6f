// Nothing: a library with the player's name that holds none of what a player has.
