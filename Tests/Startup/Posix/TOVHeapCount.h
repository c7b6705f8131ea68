// The blocks of the program's operator new that are in use, whichever thread has made them.
#pragma once

long GetHeapBlocks();
