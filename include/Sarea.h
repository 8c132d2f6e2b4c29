#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Taula.h"

/// A named network: a table, and the longest run of tokens that it is asked about.
class [[gnu::visibility("default")]] Sarea {
public:
    std::string izena;       ///< the network's key
    std::string fitxategia;  ///< path of its table file
    Taula* taula;            ///< owned
    std::int32_t maila;      ///< longest run of tokens: 7 for a key with "zenbak", else 5

    /// Empty strings, null table, `maila` 0.
    Sarea();

    /// Takes the table over and writes `izena` into its `hiztegia`. A null table is
    /// allowed and never answers.
    Sarea(std::string izena, std::string fitxategia, Taula * taula);

    Sarea(const Sarea&) = delete;  // two networks would own the same table
    Sarea& operator=(const Sarea&) = delete;
    virtual ~Sarea();

    /// The forms of `lemak` (one lemma, or several joined by "/") with the tags of
    /// `analisia`, in its case class: first letter or all letters as capitals. Records
    /// come in the order of the list, then of the search; an empty piece of the list is
    /// searched too. Only `forma` carries the case.
    ///
    /// Errors: std::out_of_range "basic_string::substr" for an empty form in class 1.
    std::vector<Analisia> ordeztuForma(const std::string& lemak, const Analisia& analisia)
        const;
};
