// Finds the records and the paradigm entries of a word without a scan. The dictionary's
// public containers stay the truth: an index that has not the size of its container is
// made anew.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "HPsarrera.h"

namespace lemara {

class DictionaryIndex {
public:
    using Records = std::vector<HPsarrera*>;
    using Roots = std::map<std::string, HPsarrera*>;

    /// The records of a word with a class tag.
    const Records& find(const Records& all, const std::string& word,
                        const std::string& tag) {
        if (record_count_ != all.size()) {
            records_.clear();
            record_count_ = 0;
            for (HPsarrera* record : all) add(record);
        }
        const auto found = records_.find(key_of(word, tag));
        return found == records_.end() ? none_ : found->second;
    }

    /// The keys of the paradigm entries that show a lemma, in ascending order.
    std::vector<std::string> roots_of(const Roots& all, const std::string& lemma) {
        if (root_count_ != all.size()) {
            roots_.clear();
            root_count_ = 0;
            for (const auto& root : all) add_root(root.first, root.second);
        }
        const auto found = roots_.find(lemma);
        if (found == roots_.end()) return {};
        std::vector<std::string> keys = found->second;
        std::sort(keys.begin(), keys.end());
        return keys;
    }

    void add(HPsarrera* record) {
        ++record_count_;
        if (record != nullptr)
            records_[key_of(record->lema, record->kategoria)].push_back(record);
    }

    void add_root(const std::string& key, const HPsarrera* entry) {
        ++root_count_;
        if (entry != nullptr) roots_[entry->lema].push_back(key);
    }

    void remove(const std::string& word, const std::string& tag) {
        const auto found = records_.find(key_of(word, tag));
        if (found == records_.end()) return;
        record_count_ -= found->second.size();
        records_.erase(found);
    }

    void remove_root(const std::string& key, const std::string& lemma) {
        auto& keys = roots_[lemma];
        keys.erase(std::remove(keys.begin(), keys.end(), key), keys.end());
        --root_count_;
    }

private:
    using Key = std::pair<std::string, std::string>;  // word and class tag

    static Key key_of(const std::string& word, const std::string& tag) {
        return {word, tag};
    }

    std::map<Key, Records> records_;
    std::unordered_map<std::string, std::vector<std::string>> roots_;
    std::size_t record_count_ = 0, root_count_ = 0;
    const Records none_{};
};

}  // namespace lemara
