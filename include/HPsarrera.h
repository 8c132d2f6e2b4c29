#pragma once

#include <string>

/// An entry of the personal dictionary: either a record, one line of the user's file, or
/// a paradigm entry, which ties a stem to a paradigm class of the network "hp".
class [[gnu::visibility("default")]] HPsarrera {
public:
    std::string lema;       ///< record: the word; paradigm entry: the lemma to show
    std::string kategoria;  ///< record: the class tag; paradigm entry: the whole tag text
    std::string erroa;      ///< the stem; empty in a record
    std::string hobe;       ///< the better form, or empty
    std::string erabili;    ///< the form to use instead, or empty
    std::string sai;        ///< the source mark
    std::string paradigma;  ///< "<hp1>" to "<hp25>"; empty in a record

    /// All fields in their order.
    HPsarrera(std::string lema, std::string kategoria, std::string erroa,
              std::string hobe, std::string erabili, std::string sai,
              std::string paradigma);
    HPsarrera(const HPsarrera&) = default;
    HPsarrera& operator=(const HPsarrera&) = default;
    virtual ~HPsarrera() = default;

    /// Writes the seven fields to standard output, " | " between them, for people.
    void print() const;
};
