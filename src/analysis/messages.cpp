#include "analysis/messages.h"

#include <iostream>

namespace {

thread_local bool quiet = false;

}  // namespace

std::ostream& lemara::messages() {
    thread_local std::ostream nowhere(nullptr);
    return quiet ? nowhere : std::cout;
}

lemara::Quiet::Quiet() : before_(quiet) { quiet = true; }

lemara::Quiet::~Quiet() { quiet = before_; }
