// The Python module: a rendering of lemara::Checker. Long work runs without the
// interpreter's lock. Tests: tests/bindings/python_test.py.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "lemara/checker.h"

namespace py = pybind11;

namespace {

using lemara::Checker;

class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

void raise_if(const std::optional<lemara::Problem>& problem) {
    if (problem) throw Error(problem->text());
}

/// Bytes of a text as Python's str; what is no UTF-8 can't come from a str, and is
/// replaced.
py::str text_of(const std::string& bytes) {
    PyObject* text = PyUnicode_DecodeUTF8(
        bytes.data(), static_cast<Py_ssize_t>(bytes.size()), "replace");
    if (text == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::str>(text);
}

std::chrono::milliseconds milliseconds(double seconds) {
    return std::chrono::milliseconds(static_cast<long>(seconds * 1000));
}

lemara::Paragraphs paragraphs_named(const std::string& name) {
    if (name == "lines") return lemara::Paragraphs::lines;
    if (name == "blank") return lemara::Paragraphs::blank;
    if (name == "whole") return lemara::Paragraphs::whole;
    throw py::value_error("paragraphs is \"lines\", \"blank\" or \"whole\"");
}

constexpr std::pair<const char*, lemara::Format> FORMATS[] = {
    {"multext", lemara::Format::multext}, {"cg3", lemara::Format::cg3},
    {"ikute", lemara::Format::ikute},     {"zuzenlex", lemara::Format::zuzenlex},
    {"markup", lemara::Format::check},
};

lemara::Format format_named(const std::string& name) {
    for (const auto& [known, format] : FORMATS) {
        if (name == known) return format;
    }
    throw py::value_error(
        "format is \"multext\", \"cg3\", \"ikute\", \"zuzenlex\" or \"markup\"");
}

/// The options of a check; `accepted` is borrowed.
lemara::CheckOptions options_of(const std::string& paragraphs, std::size_t most_forms,
                                double seconds, double seconds_per_word,
                                bool report_foreign,
                                const std::set<std::string>& accepted) {
    lemara::CheckOptions options;
    options.paragraphs = paragraphs_named(paragraphs);
    options.most_forms = most_forms;
    options.time_in_all = milliseconds(seconds);
    options.time_per_word = milliseconds(seconds_per_word);
    options.report_foreign = report_foreign;
    options.accepted = &accepted;
    return options;
}

/// What Python's `take` says to an item: only False ends.
template <class Item>
bool goes_on(const py::function& take, const Item& item) {
    const py::gil_scoped_acquire locked;
    return !take(item).is(py::bool_(false));
}

std::unique_ptr<Checker> open(const std::string& configuration,
                              const std::string& dictionary, bool use_dictionary,
                              std::vector<std::string>& notes) {
    lemara::Settings settings;
    settings.configuration = configuration;
    settings.dictionary = dictionary;
    settings.use_dictionary = use_dictionary;
    Checker::Opened opened = Checker::open(settings);
    if (!opened.checker) throw Error(opened.problems.at(0).text());
    for (const lemara::Problem& problem : opened.problems)
        notes.push_back(problem.text());
    return std::move(opened.checker);
}

/// A checker and what was passed over when it was opened.
struct PyChecker {
    std::vector<std::string> notes;
    std::unique_ptr<Checker> checker;
};

const char* const CLASS_HELP =
    "A checker over the installed tables, or those that `config` lists. One object "
    "serves many "
    "threads.";

}  // namespace

PYBIND11_MODULE(_lemara, m) {
    m.attr("__version__") = lemara::version();
    py::register_exception<Error>(m, "Error", PyExc_ValueError);

    py::class_<lemara::Span>(m, "Span")
        .def_property_readonly("start",
                               [](const lemara::Span& s) { return s.begin.code_point; })
        .def_property_readonly("end",
                               [](const lemara::Span& s) { return s.end.code_point; })
        .def_property_readonly("start_byte",
                               [](const lemara::Span& s) { return s.begin.byte; })
        .def_property_readonly("end_byte",
                               [](const lemara::Span& s) { return s.end.byte; })
        .def_property_readonly("start_utf16",
                               [](const lemara::Span& s) { return s.begin.utf16; })
        .def_property_readonly("end_utf16",
                               [](const lemara::Span& s) { return s.end.utf16; })
        .def_readonly("line", &lemara::Span::line)
        .def_readonly("column", &lemara::Span::column)
        .def_readonly("column_utf16", &lemara::Span::column_utf16)
        .def("__repr__", [](const lemara::Span& s) {
            return "Span(" + std::to_string(s.begin.code_point) + ", " +
                   std::to_string(s.end.code_point) + ")";
        });

    py::class_<lemara::Finding>(m, "Finding")
        .def_property_readonly(
            "kind", [](const lemara::Finding& f) { return lemara::name_of(f.kind); })
        .def_readonly("span", &lemara::Finding::span)
        .def_property_readonly("token",
                               [](const lemara::Finding& f) { return text_of(f.token); })
        .def_readonly("forms", &lemara::Finding::forms)
        .def_readonly("complete", &lemara::Finding::complete)
        .def("__repr__", [](const lemara::Finding& f) {
            return py::str("Finding({!r}, {!r}, {!r})")
                .format(lemara::name_of(f.kind), text_of(f.token), f.forms);
        });

    py::class_<lemara::Reading>(m, "Reading")
        .def_readonly("lemma", &lemara::Reading::lemma)
        .def_readonly("tags", &lemara::Reading::tags)
        .def_readonly("network", &lemara::Reading::network)
        .def_readonly("raw", &lemara::Reading::raw)
        .def_readonly("better", &lemara::Reading::better)
        .def_readonly("instead", &lemara::Reading::instead)
        .def_readonly("source", &lemara::Reading::source)
        .def_readonly("case_class", &lemara::Reading::case_class)
        .def("__repr__", [](const lemara::Reading& r) {
            return py::str("Reading({!r}, {!r})").format(r.lemma, r.tags);
        });

    py::class_<lemara::Form>(m, "Form")
        .def_readonly("form", &lemara::Form::form)
        .def_readonly("reading", &lemara::Form::reading)
        .def("__repr__",
             [](const lemara::Form& f) { return py::str("Form({!r})").format(f.form); });

    py::class_<lemara::Token>(m, "Token")
        .def_readonly("span", &lemara::Token::span)
        .def_property_readonly("text",
                               [](const lemara::Token& t) { return text_of(t.text); })
        .def_readonly("folded", &lemara::Token::folded)
        .def_readonly("known", &lemara::Token::known)
        .def_readonly("foreign", &lemara::Token::foreign)
        .def_readonly("blank_follows", &lemara::Token::blank_follows)
        .def_readonly("paragraph", &lemara::Token::paragraph)
        .def_readonly("sentence", &lemara::Token::sentence)
        .def_readonly("readings", &lemara::Token::readings)
        .def("__repr__", [](const lemara::Token& t) {
            return py::str("Token({!r})").format(text_of(t.text));
        });

    py::class_<lemara::PersonalWord>(m, "PersonalWord")
        .def_readonly("word", &lemara::PersonalWord::word)
        .def_readonly("word_class", &lemara::PersonalWord::word_class)
        .def_readonly("better", &lemara::PersonalWord::better)
        .def_readonly("instead", &lemara::PersonalWord::instead)
        .def("__repr__", [](const lemara::PersonalWord& w) {
            return py::str("PersonalWord({!r}, {!r})").format(w.word, w.word_class);
        });

    m.def(
        "find_configuration",
        [] {
            std::vector<std::string> looked;
            const std::string found = lemara::find_configuration(&looked);
            return py::make_tuple(found, looked);
        },
        "The configuration that a checker uses when it is told none, or an empty string, "
        "and the places where it was looked for.");
    m.def("default_dictionary", &lemara::default_dictionary,
          "The personal dictionary that a checker uses when it is told none.");

    py::class_<PyChecker>(m, "Checker", CLASS_HELP)
        .def(py::init([](const std::string& config, const std::string& dictionary,
                         bool use_dictionary) {
                 auto made = std::make_unique<PyChecker>();
                 const py::gil_scoped_release unlocked;
                 made->checker = open(config, dictionary, use_dictionary, made->notes);
                 return made;
             }),
             py::arg("config") = "", py::arg("dictionary") = "",
             py::arg("use_dictionary") = true)
        .def_readonly("notes", &PyChecker::notes,
                      "What was passed over when the checker was opened.")
        .def_property_readonly(
            "configuration",
            [](const PyChecker& c) { return c.checker->configuration(); },
            "Path of the configuration in use.")
        .def_property_readonly(
            "dictionary", [](const PyChecker& c) { return c.checker->dictionary(); },
            "Path of the personal dictionary, or empty.")
        .def_property_readonly(
            "tables", [](const PyChecker& c) { return c.checker->tables(); },
            "Paths of the tables in use.")
        .def(
            "check",
            [](const PyChecker& c, const std::string& text, const std::string& paragraphs,
               std::size_t most_forms, double seconds, double seconds_per_word,
               bool report_foreign, const std::set<std::string>& accepted) {
                const auto options =
                    options_of(paragraphs, most_forms, seconds, seconds_per_word,
                               report_foreign, accepted);
                const py::gil_scoped_release unlocked;
                return c.checker->check(text, options);
            },
            py::arg("text"), py::kw_only(), py::arg("paragraphs") = "lines",
            py::arg("most_forms") = 8, py::arg("seconds") = 0.0,
            py::arg("seconds_per_word") = 0.0, py::arg("report_foreign") = false,
            py::arg("accepted") = std::set<std::string>(),
            "The findings in a text, in its order.")
        .def(
            "check_each",
            [](const PyChecker& c, const std::string& text, const py::function& take,
               const std::string& paragraphs, std::size_t most_forms, double seconds,
               double seconds_per_word, bool report_foreign,
               const std::set<std::string>& accepted) {
                const auto options =
                    options_of(paragraphs, most_forms, seconds, seconds_per_word,
                               report_foreign, accepted);
                const py::gil_scoped_release unlocked;
                c.checker->check(text, options, [&](const lemara::Finding& finding) {
                    return goes_on(take, finding);
                });
            },
            py::arg("text"), py::arg("take"), py::kw_only(),
            py::arg("paragraphs") = "lines", py::arg("most_forms") = 8,
            py::arg("seconds") = 0.0, py::arg("seconds_per_word") = 0.0,
            py::arg("report_foreign") = false,
            py::arg("accepted") = std::set<std::string>(),
            "Calls take(finding) for each finding, without keeping them. False ends it.")
        .def(
            "analyze",
            [](const PyChecker& c, const std::string& text,
               const std::string& paragraphs) {
                const lemara::Paragraphs wanted = paragraphs_named(paragraphs);
                const py::gil_scoped_release unlocked;
                return c.checker->analyze(text, wanted);
            },
            py::arg("text"), py::kw_only(), py::arg("paragraphs") = "lines",
            "All tokens of a text with their readings.")
        .def(
            "analyze_each",
            [](const PyChecker& c, const std::string& text, const py::function& take,
               const std::string& paragraphs) {
                const lemara::Paragraphs wanted = paragraphs_named(paragraphs);
                const py::gil_scoped_release unlocked;
                c.checker->analyze(text, wanted, [&](const lemara::Token& token) {
                    return goes_on(take, token);
                });
            },
            py::arg("text"), py::arg("take"), py::kw_only(),
            py::arg("paragraphs") = "lines",
            "Calls take(token) for each token, without keeping them. False ends it.")
        .def(
            "render",
            [](const PyChecker& c, const std::string& paragraph,
               const std::string& format, bool variants, int number) {
                const lemara::Format wanted = format_named(format);
                std::string markup;
                {
                    const py::gil_scoped_release unlocked;
                    markup = c.checker->render(paragraph, wanted, variants, number);
                }
                return text_of(markup);
            },
            py::arg("paragraph"), py::arg("format") = "multext",
            py::arg("variants") = false, py::arg("number") = 1,
            "A paragraph in one of the mark-ups: \"multext\", \"cg3\", \"ikute\", "
            "\"zuzenlex\", or \"markup\", a verdict for each token.")
        .def(
            "valid",
            [](const PyChecker& c, const std::string& word) {
                const py::gil_scoped_release unlocked;
                return c.checker->valid(word);
            },
            py::arg("word"), "True if a check of the word has no finding.")
        .def(
            "suggest",
            [](const PyChecker& c, const std::string& word, std::size_t most,
               double seconds) {
                const py::gil_scoped_release unlocked;
                return c.checker->suggest(word, most, milliseconds(seconds));
            },
            py::arg("word"), py::arg("most") = 8, py::arg("seconds") = 0.0,
            "Proposals for a word.")
        .def(
            "lemmas",
            [](const PyChecker& c, const std::string& word) {
                const py::gil_scoped_release unlocked;
                return c.checker->lemmas(word);
            },
            py::arg("word"), "The lemmas of a word, without repeats.")
        .def(
            "generate",
            [](const PyChecker& c, const std::string& word, const std::string& tag) {
                const py::gil_scoped_release unlocked;
                return c.checker->generate(word, tag);
            },
            py::arg("word"), py::arg("tag"), "The forms of a word.")
        .def(
            "add_word",
            [](const PyChecker& c, const std::string& word, const std::string& word_class,
               const std::string& better, const std::string& instead) {
                const py::gil_scoped_release unlocked;
                raise_if(c.checker->add_word({word, word_class, better, instead}));
            },
            py::arg("word"), py::arg("word_class") = "", py::kw_only(),
            py::arg("better") = "", py::arg("instead") = "",
            "Adds a word to the personal dictionary and its file.")
        .def(
            "remove_word",
            [](const PyChecker& c, const std::string& word,
               const std::string& word_class) {
                const py::gil_scoped_release unlocked;
                raise_if(c.checker->remove_word(word, word_class));
            },
            py::arg("word"), py::arg("word_class") = "", "Removes a personal word.")
        .def(
            "words", [](const PyChecker& c) { return c.checker->words(); },
            "The personal words, in the order of the file.")
        .def(
            "import_words",
            [](const PyChecker& c, const std::string& list) {
                lemara::ImportReport report;
                {
                    const py::gil_scoped_release unlocked;
                    report = c.checker->import_words(list);
                    raise_if(report.problem);
                }
                std::vector<std::string> refused;
                for (const auto& problem : report.refused) {
                    refused.push_back(problem.text());
                }
                return py::make_tuple(report.added, report.there, refused);
            },
            py::arg("list"), "Adds the words of a plain or hunspell list.")
        .def(
            "export_words", [](const PyChecker& c) { return c.checker->export_words(); },
            "The personal words as a hunspell list.")
        .def(
            "refresh",
            [](const PyChecker& c) {
                const py::gil_scoped_release unlocked;
                return c.checker->refresh();
            },
            "Reads the dictionary again if another process has changed it.");
}
