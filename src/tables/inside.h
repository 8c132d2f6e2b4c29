// What the rooms inside the library may touch of a table, beyond its public operations.
#pragma once

#include "Taula.h"
#include "tables/forms.h"

struct lemara::TableInside {
    static TableForms& forms(const Taula& table) { return *table.formak; }
    static bool load_image(Taula& table) { return table.load_image(); }
    static bool load_text_file(Taula& table) { return table.load_text_file(); }
};
