#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lemara {
class CommonParts;
struct RecordText;
}  // namespace lemara

/// One piece of an analysis string.
///
/// An analysis string is Latin-1 text: the characters of the lemma, then tags ("<IZE>"),
/// with bracket groups ("[h=...]") among them. `modua` chooses what is read:
///
/// - "L": the lemma. One of the prefixes "ba<AUR><MEN><BALD>", "ba<AUR><PRT>" and
///   "bait<AUR><MEN><KAUS>" in front is skipped. Reading ends at the first tag, the
///   marker
///   "<>" included, but quality tags ("<0...>") and the one tag that directly follows a
///   bracket group are passed over, whatever that tag is.
/// - "[h=", "[e=", "[p=", "[s=", "[a=", "[z=", "[c=": the value of the first such group;
///   empty if there is none.
///
/// Any other `modua` gives the empty string, and so does a null pointer. A tag or bracket
/// group that is never closed ends at the end of the string.
[[gnu::visibility("default")]] std::string ateraGoitik(const char* analisia,
                                                       const char* modua);

/// One analysis of a word, taken apart when it is built. A plain value.
///
/// The string belongs to a notation of tags by the first characters of their names: "0" a
/// quality, "1" an opinion, "hp" a class of the personal dictionary, any other a
/// grammatical tag. A tag that is never closed ends at the end of the string.
class [[gnu::visibility("default")]] Analisia {
public:
    std::string analisia;        ///< the whole analysis string
    std::string lema;            ///< the lemma
    std::string etiketa;         ///< ateraEtiketa of the string: " IZE ARR"
    std::string twol;            ///< ateraTWOL of the string: "+Ize+Arr"
    std::string hiztegia;        ///< name of the network that gave the analysis
    std::string sai;             ///< value of the "[s=" group
    std::string hobe;            ///< value of the "[h=" group: the better form
    std::string erabili;         ///< value of the "[e=" group: the form to use instead
    std::string tasuna;          ///< ateraTasuna of the string
    std::string iritzia;         ///< ateraIritzia of the string
    std::string forma;           ///< a generated surface form; empty in an analysis
    std::int32_t maiuskula = 0;  ///< case class: 0 none, 1 first letter, 2 all capitals

    /// Takes `analisia` apart. Every "+" leaves a lemma of two bytes or more, unless
    /// `etiketa` contains "WEB": the plus signs mark boundaries inside a word, and a web
    /// address keeps its own.
    Analisia(std::string analisia, std::string hiztegia);

    /// The same, and `forma` filled in. For the library alone, which knows what it takes.
    explicit Analisia(const lemara::RecordText& text);

    Analisia(const Analisia&) = default;
    Analisia(Analisia &&) = default;
    Analisia& operator=(const Analisia&) = default;
    Analisia& operator=(Analisia&&) = default;
    virtual ~Analisia() = default;

    /// The names of all tags but "hp...", "0..." and "1...", each behind a blank. The
    /// marker
    /// "<>" has an empty name and adds a lone blank. No field of the object is read.
    std::string ateraEtiketa(const char* analisia) const;

    /// As ateraEtiketa, behind a "+" each and recased to one capital: "+Ize". All names
    /// that begin with "h" and the empty name are left out as well.
    std::string ateraTWOL(const char* analisia) const;

    /// The names of the quality tags ("0..."), each behind a blank.
    std::string ateraTasuna(const char* analisia) const;

    /// The names of the opinion tags ("1..."), each behind a blank.
    std::string ateraIritzia(const char* analisia) const;

    /// True if the first lemma is strictly shorter, in bytes.
    static bool CompareLemaLuzera(const Analisia& a, const Analisia& b);

private:
    template <class Text, class Name>
    Analisia(const lemara::CommonParts& parts, Text&& analisia, Name&& hiztegia,
             std::string_view forma);
    void take_apart();
    bool read_tags(std::string_view text);
};

/// True if the first lemma sorts strictly before the second, by unsigned bytes, a prefix
/// before the longer string.
[[gnu::visibility("default")]] bool CompareLemaAlfabetikoa(const Analisia& a,
                                                           const Analisia& b);
