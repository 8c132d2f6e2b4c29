// Two processes add and remove words and are killed at random moments: every word that
// was acknowledged is there, and the file always loads.
//
// LEMARA_KILLS sets the number of kills, LEMARA_SEED where they begin.
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <set>

#include "host_world.h"

namespace lemara::test {
namespace {

std::size_t number_from(const char* name, std::size_t otherwise) {
    const char* value = std::getenv(name);
    return value == nullptr ? otherwise : std::strtoul(value, nullptr, 10);
}

std::string word_of(unsigned number) {
    std::string word = "zap";
    for (; number > 0; number /= 26) word += static_cast<char>('a' + number % 26);
    return word + "oro";
}

/// One record of a worker: it is about to change a word, or has changed it.
struct Note {
    unsigned word;
    bool adds, done;
};

/// Adds words, and removes some of its own, until it is killed.
[[noreturn]] void work(const Settings& settings, unsigned first, unsigned step,
                       unsigned seed, int notes) {
    const auto checker = Checker::open(settings).checker;
    if (!checker) _exit(3);
    std::mt19937 random(seed);
    std::vector<unsigned> mine;
    for (unsigned number = first;; number += step) {
        Note note{number, true, false};
        const bool removes = !mine.empty() && random() % 3 == 0;
        if (removes) note = {mine[random() % mine.size()], false, false};
        if (write(notes, &note, sizeof note) != sizeof note) _exit(4);
        const auto problem = removes
                                 ? checker->remove_word(word_of(note.word))
                                 : checker->add_word({word_of(note.word), "ARR", "", ""});
        if (problem) _exit(5);
        note.done = true;
        if (write(notes, &note, sizeof note) != sizeof note) _exit(4);
        if (removes) {
            mine.erase(std::find(mine.begin(), mine.end(), note.word));
        } else {
            mine.push_back(number);
        }
    }
}

struct Worker {
    pid_t process;
    int notes;
};

Worker start(const Settings& settings, unsigned first, unsigned step, unsigned seed) {
    int ends[2];
    if (pipe(ends) != 0) return {-1, -1};
    const pid_t process = fork();
    if (process == 0) {
        close(ends[0]);
        work(settings, first, step, seed, ends[1]);
    }
    close(ends[1]);
    return {process, ends[0]};
}

/// Waits until a worker has written so many notes.
void wait_for(const Worker& worker, std::size_t notes) {
    int bytes = 0;
    for (int i = 0; i < 200000; ++i) {
        if (ioctl(worker.notes, FIONREAD, &bytes) != 0) return;
        if (static_cast<std::size_t>(bytes) >= notes * sizeof(Note)) return;
        usleep(100);
    }
}

}  // namespace

TEST(DictionaryKill, NoAcknowledgedWordIsLost) {
    const std::size_t kills = number_from("LEMARA_KILLS", 300);
    const auto seed = static_cast<unsigned>(number_from("LEMARA_SEED", 1));
    constexpr unsigned FRESH = 20000;  // words between the starts of two workers
    HostWorld world;
    std::mt19937 random(seed);
    std::set<std::string> must, may;  // there; perhaps there
    std::size_t changes = 0;
    for (std::size_t i = 0; i < kills; i += 2) {
        SCOPED_TRACE("kills before: " + std::to_string(i) + ", seed " +
                     std::to_string(seed));
        Worker workers[2];
        for (unsigned k = 0; k < 2; ++k) {
            workers[k] = start(world.settings, FRESH * static_cast<unsigned>(i) + k, 2,
                               static_cast<unsigned>(random()));
            ASSERT_GT(workers[k].process, 0);
        }
        for (const Worker& worker : workers) {
            // Behind so many of its notes, however slow the disk is, and a moment.
            wait_for(worker, random() % 8);
            usleep(static_cast<unsigned>(random() % 3000));
            kill(worker.process, SIGKILL);
        }
        for (const Worker& worker : workers) {
            int status = 0;
            ASSERT_EQ(waitpid(worker.process, &status, 0), worker.process);
            ASSERT_TRUE(WIFSIGNALED(status))
                << "a worker gave up: " << WEXITSTATUS(status);
            for (Note note; read(worker.notes, &note, sizeof note) == sizeof note;) {
                const std::string word = word_of(note.word);
                if (!note.done) {
                    must.erase(word);
                    may.insert(word);
                    continue;
                }
                ++changes;
                may.erase(word);
                if (note.adds) must.insert(word);
            }
            close(worker.notes);
        }
        // The engine's loader throws on a bad line.
        const HiztegiPertsonala loaded(world.settings.dictionary);
        std::set<std::string> there;
        for (const HPsarrera* entry : loaded.sarrerak) there.insert(entry->lema);
        for (const std::string& word : must)
            ASSERT_EQ(there.count(word), 1u) << word << " is lost";
        for (const std::string& word : there) {
            ASSERT_TRUE(must.count(word) + may.count(word) > 0) << word << " came back";
        }
        if (there.size() > 2000) {  // begin anew, so that the test stays quick
            std::filesystem::remove(world.settings.dictionary);
            must.clear();
            may.clear();
        }
    }
    EXPECT_GT(changes, kills / 4) << "the workers were killed before they did anything";
    const auto checker = world.open();
    EXPECT_EQ(world.problems.size(), 0u);
    EXPECT_EQ(checker->add_word({"zapaburu", "", "", ""}), std::nullopt);
    std::printf("%zu kills, %zu acknowledged changes\n", kills, changes);
}

}  // namespace lemara::test
