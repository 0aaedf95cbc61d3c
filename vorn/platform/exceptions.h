#pragma once

#include <exception>

// The framework's exceptions, thrown by value and derived from std::exception, so that a host without the
// framework catches them as it catches everything else.

/// Root of the framework's exceptions.
class CException : public std::exception {
 public:
  /// The reason in words.
  [[nodiscard]] const char* what() const noexcept override { return "framework exception"; }
};

/// An argument outside its valid range, above all an index outside a collection.
class CInvalidArgException : public CException {
 public:
  /// The reason in words.
  [[nodiscard]] const char* what() const noexcept override { return "invalid argument"; }
};
