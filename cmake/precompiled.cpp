// Nothing of its own: stands for the headers that are compiled with it.
