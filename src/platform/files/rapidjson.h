// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

// RapidJSON in a namespace of its own, so that its use of the processor's wide instructions stays within this folder:
// with them it reads up to 15 bytes behind a text, which only the callers here are prepared for.

#define RAPIDJSON_NAMESPACE lumora::rapidjson
#define RAPIDJSON_NAMESPACE_BEGIN namespace lumora::rapidjson {
#define RAPIDJSON_NAMESPACE_END }
#if defined(__SSE2__)
#define RAPIDJSON_SSE2
#endif

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
