// The library comes to life here: every static of it that needs construction stands in this file, in the order in which
// they depend on each other. The language constructs them from top to bottom when the library is loaded, and destroys
// them from bottom to top at the end. The debug server, made on first need, is never destroyed.

#include <Debug/TOVMSDevLogger.h>

// 1. Diagnostics from the first moment on. The constructor makes the debug server.
const TOVDebug::CTOVMSDevLogger TOVDebug::CTOVMSDevLogger::_m_this;

// 2. The invalid class, then the class server.

// 3. The shared empty values: narrow string, wide string, path.

// 4. The virtual file system: its class, then the object.

// 5. Last, the file handle table. Nothing above may open a file.
