#include "unit/random_user.h"

#include <random>

namespace karvel {
namespace {

class RandomUsers : public ::testing::TestWithParam<unsigned> {};

TEST_P(RandomUsers, FindTheProgramAsTheModelHasIt) {
  std::mt19937 random(GetParam());
  RandomUser([&random] { return static_cast<unsigned>(random()); }).live(600);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUsers, ::testing::Range(1U, 9U));

}  // namespace
}  // namespace karvel
