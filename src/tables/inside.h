// What the rooms inside the library may touch of a table, beyond its public operations.
#pragma once

#include "Taula.h"
#include "tables/forms.h"

struct lemara::TableInside {
    static TableForms& forms(const Taula& table) { return *table.formak; }
    static Forms& forms_of(const Taula& table) { return table.formak->of(table.egoerak); }
    static bool load_for_searches(Taula& table) { return table.load_for_searches(); }
};
