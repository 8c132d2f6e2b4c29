#include "HPsarrera.h"

#include <iostream>
#include <utility>

HPsarrera::HPsarrera(std::string lema_, std::string kategoria_, std::string erroa_,
                     std::string hobe_, std::string erabili_, std::string sai_,
                     std::string paradigma_)
    : lema(std::move(lema_)),
      kategoria(std::move(kategoria_)),
      erroa(std::move(erroa_)),
      hobe(std::move(hobe_)),
      erabili(std::move(erabili_)),
      sai(std::move(sai_)),
      paradigma(std::move(paradigma_)) {}

void HPsarrera::print() const {
    std::cout << lema << " | " << kategoria << " | " << erroa << " | " << hobe << " | "
              << erabili << " | " << sai << " | " << paradigma << std::endl;
}
