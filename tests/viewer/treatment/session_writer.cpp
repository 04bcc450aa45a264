// Works on a treatment as a viewer does, on a clock that it moves itself, for tests that kill it or
// run two of it at a time:
//
//     session_writer steady DATABASE TREATMENT SEED
// changes a bracket or places an elastic every 0.2 to 2.8 seconds, for ever, and says after each
// step "NUMBER TIME NOW": the change's number, its time and the time now. A colour and a size are
// the number of their change.
//
//     session_writer together DATABASE TREATMENT WRITER
// opens the note, and works in eight rounds; before each it says "ready" and waits for a line on
// standard input. WRITER is 1 or 2. Ends when everything is stored, and says which elastics it
// left, one a line: "SIZE MEMBER MEMBER".
//
//     session_writer claim DATABASE - -
// claims the database for a program with windows, says "ours" or "elsewhere", and hangs.

#include "tests/document/DocumentFixture.h"
#include "viewer/store/DatabaseClaim.h"
#include "viewer/treatment/TreatmentSession.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <random>

namespace {

using kelo::DXDocumentModel;
using kelo::ElasticModel;
using kelo::test::Keys;

const QDate noteDate(2026, 11, 20);

struct Work
{
    Work(const char *database, qint64 treatment)
    {
        const auto opened = viewer::TreatmentStore::open(QString::fromUtf8(database));
        if (!opened) fail(opened.sentence());
        store = opened.value();
        document = std::make_shared<DXDocumentModel>();
        const Keys teeth = kelo::test::joined(kelo::TreatmentNote::upperToothNameKeys(),
                                              kelo::TreatmentNote::lowerToothNameKeys());
        document->setToothModels(kelo::test::emptyModels(teeth));
        document->setBracketModels(kelo::test::emptyModels(teeth));
        session = std::make_unique<viewer::TreatmentSession>(store, treatment, document);
        const auto shown = session->openNote(noteDate);
        if (!shown) fail(shown.sentence());
    }

    [[noreturn]] static void fail(const QString &sentence)
    {
        std::fprintf(stderr, "%s\n", sentence.toUtf8().constData());
        std::exit(3);
    }

    static std::shared_ptr<kelo::ElasticsSizeType> size(long typeID)
    {
        auto type = std::make_shared<kelo::ElasticsSizeType>();
        type->typeID = typeID;
        return type;
    }

    std::shared_ptr<ElasticModel> place(long sizeTypeID, Keys members) const
    {
        auto elastic =
            std::make_shared<ElasticModel>(nullptr, size(sizeTypeID), std::move(members));
        document->placeElasticModel(elastic);
        return elastic;
    }

    kelo::test::TestClock clock;
    std::shared_ptr<viewer::TreatmentStore> store;
    std::shared_ptr<DXDocumentModel> document;
    std::unique_ptr<viewer::TreatmentSession> session;
};

void workSteadily(Work &work, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> pause(0.2, 2.8);
    const double start = work.clock->currentTime();
    for (long number = 1;; ++number) {
        const double time = work.clock->currentTime() - start;
        const std::string key = std::to_string(2 + number % 14);
        if (number % 4 == 0)
            work.place(number, {key, "30"});
        else
            work.document->bracket_setColorWithBracketColorTypeID(key, number);
        work.clock->advance(pause(random));
        std::printf("%ld %.9f %.9f\n", number, time, work.clock->currentTime() - start);
        std::fflush(stdout);
    }
}

void workTogether(Work &work, long writer)
{
    constexpr long stepCount = 40;
    constexpr long stepsOfRound = 5;
    work.store->setClock([writer] { return writer; });
    const auto waitForTheOther = [] {
        std::printf("ready\n");
        std::fflush(stdout);
        std::string line;
        std::getline(std::cin, line);
    };
    waitForTheOther();
    // Of the six elastics that were there each writer removes one and changes one.
    const auto there = work.document->elasticModels();
    const auto first = static_cast<std::size_t>(writer - 1) * 2;
    work.document->removeElasticModel(there.at(first));
    work.document->elasticModel_setElasticsSizeType(there.at(first + 1),
                                                    Work::size(writer * 1000 + 999));
    std::mt19937 random(static_cast<unsigned>(writer));
    std::vector<std::shared_ptr<ElasticModel>> own{there.at(first + 1)};
    for (long step = 0; step < stepCount; ++step) {
        if (step > 0 && step % stepsOfRound == 0) waitForTheOther();
        const std::size_t chosen = random() % own.size();
        switch (random() % 4) {
        case 0:
            if (own.size() == 1) break;
            work.document->removeElasticModel(own[chosen]);
            own.erase(own.begin() + static_cast<std::ptrdiff_t>(chosen));
            break;
        case 1:
            work.document->elasticModel_setElasticsSizeType(own[chosen],
                                                            Work::size(writer * 1000 + 500 + step));
            break;
        default:
            own.push_back(work.place(writer * 1000 + step, {std::to_string(2 + random() % 14),
                                                            std::to_string(18 + random() % 14)}));
            break;
        }
        work.document->bracket_setColorWithBracketColorTypeID(
            std::to_string((writer == 1 ? 2 : 18) + step % 14), step);
        work.clock->advance(0.3);
    }
    // The other one may hold the lock at any single try.
    for (int attempt = 0; attempt < 1000; ++attempt) {
        if (const auto closed = work.session->close()) break;
    }
    if (work.session->keptReportCount() > 0) Work::fail(QStringLiteral("not everything is stored"));
    for (const auto &elastic : own) {
        std::printf("%ld", elastic->elasticsSizeType()->typeID);
        for (const std::string &member : elastic->bracketSequence())
            std::printf(" %s", member.c_str());
        std::printf("\n");
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 5) return 1;
    if (std::string(argv[1]) == "claim") {
        const viewer::DatabaseClaim claim(QString::fromUtf8(argv[2]));
        std::printf("%s\n", claim.isElsewhere() ? "elsewhere" : "ours");
        std::fflush(stdout);
        std::cin.get();
        return 0;
    }
    Work work(argv[2], std::atoll(argv[3]));
    const long number = std::atol(argv[4]);
    if (std::string(argv[1]) == "steady")
        workSteadily(work, static_cast<unsigned>(number));
    else
        workTogether(work, number);
    return 0;
}
