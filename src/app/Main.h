#pragma once

// Runs the program. Does nothing unless the command line is "-master". Shows an uncaught error in a message box.
void Main();
