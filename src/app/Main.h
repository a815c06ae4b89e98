#pragma once

// The program from its start to its end. Anything but the option "-master" on the command line ends it at once, without
// a word. An error that nothing else caught is shown in a message box.
void Main();
