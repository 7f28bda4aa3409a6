#pragma once

#include <QUrl>

namespace zolt {

/// Whether the host is this machine itself: 127.0.0.0/8, ::1 or "localhost". Pure.
bool isLoopback(const QUrl& url);

/// Whether an address may be fetched: https, or http from this machine itself. Pure.
bool mayFetch(const QUrl& url);

/// Whether a redirect may be followed: only to an address that may be fetched, and never from https to http. Pure.
bool mayRedirect(const QUrl& from, const QUrl& to);

}  // namespace zolt
