#include "host/document/piece_relay.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

namespace vorn_host {
namespace {

TEST(PieceRelay, HandsOnEveryPieceInOrder) {
  std::string all;
  const TextSink sink = [&](std::string_view piece) { all += piece; };
  PieceRelay relay(sink);
  std::string expected;
  for (int i = 0; i < 200; ++i) {
    std::string piece = std::to_string(i) + " ";
    expected += piece;
    relay.Take(piece);
    EXPECT_TRUE(piece.empty());
  }
  relay.Wait();
  EXPECT_EQ(all, expected);
}

TEST(PieceRelay, GivesRoomBack) {
  const TextSink sink = [](std::string_view) {};
  PieceRelay relay(sink);
  std::string piece(1000, 'x');
  relay.Take(piece);
  piece.assign(10, 'y');
  relay.Take(piece);
  EXPECT_GE(piece.capacity(), 1000u);
}

TEST(PieceRelay, ThrowsAtTheNextPieceWhatTheSinkThrew) {
  const TextSink sink = [](std::string_view piece) {
    if (piece == "b") throw std::runtime_error("full");
  };
  PieceRelay relay(sink);
  std::string piece = "a";
  relay.Take(piece);
  piece = "b";
  relay.Take(piece);
  piece = "c";
  EXPECT_THROW(relay.Take(piece), std::runtime_error);
}

TEST(PieceRelay, ThrowsAtTheEndWhatTheSinkThrewAtTheLastPiece) {
  const TextSink sink = [](std::string_view) { throw std::runtime_error("full"); };
  PieceRelay relay(sink);
  std::string piece = "a";
  relay.Take(piece);
  EXPECT_THROW(relay.Wait(), std::runtime_error);
}

TEST(PieceRelay, EndsWhenItsLastPieceHasBeenHandedOn) {
  std::string all;
  const TextSink sink = [&](std::string_view piece) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    all += piece;
  };
  {
    PieceRelay relay(sink);
    std::string piece = "a";
    relay.Take(piece);
  }
  EXPECT_EQ(all, "a");
}

}  // namespace
}  // namespace vorn_host
