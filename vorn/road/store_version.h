#pragma once

#include "vorn/platform/carchive.h"
#include "vorn/platform/cstring.h"

/// The store version that some records carry themselves, at their head. Storing writes the newest one; loading takes
/// what the archive has. Afterwards `storeVersion` is the version of the record.
///
/// A record newer than that throws `false`: its layout is not known, and the host reports that the data come from a
/// newer library. Versions are texts such as "05.00", compared byte by byte.
inline void SerializeStoreVersion(CArchive& ar, CString& storeVersion, const CString& newest) {
  if (ar.IsStoring()) {
    storeVersion = newest;
    ar << storeVersion;
    return;
  }
  ar >> storeVersion;
  if (newest.Compare(storeVersion) < 0) throw false;
}
