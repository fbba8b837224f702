// SPDX-License-Identifier: Apache-2.0
#include "BodyOptions.h"

#include "OptionValues.h"

void BodyOptions::declare(CLI::App& parser, const std::string& does)
{
    parser
        .add_option_function<std::string>(
            "--body",
            [this](const std::string& word) {
                body = word == "outside" ? KVGamut::Body::Outside : KVGamut::Body::Intersection;
            },
            does +
                ": outside (the part of the first gamut outside the second one) or intersection (what both "
                "have in common)")
        ->transform(OptionValues::oneOf({"outside", "intersection"}))
        ->type_name("PART");
}

void BodyOptions::check(qsizetype inputs) const
{
    if (body && inputs != 2)
        throw CLI::ValidationError("--body", "it needs exactly two gamuts");
}

QString BodyOptions::titleOf(const QStringList& titles) const
{
    const QString words = *body == KVGamut::Body::Outside ? QStringLiteral("%1 outside %2")
                                                          : QStringLiteral("%1 and %2, intersection");
    return words.arg(titles.value(0), titles.value(1));
}

Result<KVGamut::GamutObject> BodyOptions::of(const KVGamut::GamutObject& first,
                                             const KVGamut::GamutObject& second,
                                             const QStringList& titles) const
{
    KVGamut::GamutObject part = first.body(second, *body);
    if (const auto problem = part.problem())
        return tl::unexpected(Problem(*problem).about(titleOf(titles)));
    if (part.mesh().isEmpty())
        return tl::unexpected(Problem(*body == KVGamut::Body::Outside ? ProblemCode::NothingOutside
                                                                      : ProblemCode::NothingInCommon,
                                      {titles.value(0), titles.value(1)}));
    return part;
}
