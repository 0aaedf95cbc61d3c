#pragma once

#include <future>
#include <string>
#include <string_view>
#include <utility>

#include "host/document/atomic_file.h"
#include "host/document/background.h"

namespace vorn_host {

/// Hands the pieces of a text on in another thread, one after the other, while the next one is made.
class PieceRelay {
 public:
  /// The sink gets every piece. It has to outlive the relay.
  explicit PieceRelay(const TextSink& sink) : m_sink(sink) {}
  PieceRelay(const PieceRelay&) = delete;
  PieceRelay& operator=(const PieceRelay&) = delete;
  ~PieceRelay() = default;  // waits for the last piece

  /// Takes a piece and gives back a text of no length, with room where there was a piece before. Throws what the sink
  /// threw at the piece before.
  void Take(std::string& piece) {
    Wait();
    std::swap(m_piece, piece);
    piece.clear();
    m_taken = InBackground([this] { m_sink(m_piece); });
  }

  /// Waits until the last piece has been handed on, and throws what the sink threw.
  void Wait() {
    if (m_taken.valid()) m_taken.get();
  }

 private:
  const TextSink& m_sink;
  std::string m_piece;
  std::future<void> m_taken;  ///< last, so that it is waited for while the piece is still there
};

}  // namespace vorn_host
