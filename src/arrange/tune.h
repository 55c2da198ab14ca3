#pragma once
#include <cstdlib>
#define TUNE(name, value) ([] { static const double v = std::getenv (#name) ? std::atof (std::getenv (#name)) : (value); return v; }())
