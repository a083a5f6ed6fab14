#pragma once

#include "platform/FileIdentity.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace ambulet {

/// Where a search ends that has found nothing.
struct SearchBounds {
    int entries = 20'000;
    std::chrono::milliseconds time{40};
};

/// The path of a file by its identity: in one of the folders or anywhere below them, the nearest to
/// them first. Neither links nor other file systems than `device` nor hidden folders are entered.
std::optional<QString> findFile(const FileIdentity& identity, const QStringList& folders,
                                std::uint64_t device, const SearchBounds& bounds = {});

}  // namespace ambulet
