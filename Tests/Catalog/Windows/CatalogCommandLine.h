// A command line that gives a program these arguments again.
#pragma once

#include "Catalog/CatalogProcess.h"

std::string CatalogCommandLine(const std::vector<std::string>& aArguments);
