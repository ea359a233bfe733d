#include "contract/known_differences.h"

namespace karvel {

bool differsHere(Difference) {
  return false;
}

}  // namespace karvel
