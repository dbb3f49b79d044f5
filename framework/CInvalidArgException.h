// Raised by the containers for an index or a position that does not exist.
#pragma once

#include <stdexcept>

class CInvalidArgException : public std::invalid_argument {
public:
  CInvalidArgException() : std::invalid_argument("invalid argument") {}
};
