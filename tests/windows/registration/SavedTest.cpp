#include "ocx/Saved.h"

#include <gtest/gtest.h>
#include <wrl/client.h>

#include <vector>

#include "com/ComBorder.h"

namespace {

using Microsoft::WRL::ComPtr;

ComPtr<IStream> streamOf(const std::vector<LONG>& words) {
  ComPtr<IStream> stream;
  CreateStreamOnHGlobal(nullptr, TRUE, &stream);
  stream->Write(words.data(), static_cast<ULONG>(words.size() * sizeof(LONG)), nullptr);
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  return stream;
}

HRESULT codeOfReading(const std::vector<LONG>& words) {
  try {
    ocx::readSaved(*streamOf(words).Get());
  } catch (const com::Error& failure) {
    return failure.code();
  }
  return S_OK;
}

constexpr LONG kMark = 0x4C534554;

TEST(Saved, ComesBackFromAStream) {
  ComPtr<IStream> stream = streamOf({});
  ocx::writeSaved({{12345, 6789}}, *stream.Get());
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  const ocx::Saved saved = ocx::readSaved(*stream.Get());
  EXPECT_EQ(saved.extent.cx, 12345);
  EXPECT_EQ(saved.extent.cy, 6789);
}

TEST(Saved, ComesBackFromAStorage) {
  ComPtr<ILockBytes> bytes;
  ComPtr<IStorage> storage;
  ASSERT_EQ(CreateILockBytesOnHGlobal(nullptr, TRUE, &bytes), S_OK);
  ASSERT_EQ(StgCreateDocfileOnILockBytes(
                bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, &storage),
            S_OK);
  ocx::writeSaved({{100, 200}}, *storage.Get());
  EXPECT_EQ(ocx::readSaved(*storage.Get()).extent.cy, 200);
}

TEST(Saved, RefusesWhatItDidNotWrite) {
  EXPECT_EQ(codeOfReading({}), STG_E_INVALIDHEADER);
  EXPECT_EQ(codeOfReading({kMark, 1, 100}), STG_E_INVALIDHEADER);
  EXPECT_EQ(codeOfReading({kMark, 2, 100, 100}), STG_E_INVALIDHEADER);
  EXPECT_EQ(codeOfReading({0, 1, 100, 100}), STG_E_INVALIDHEADER);
  EXPECT_EQ(codeOfReading({kMark, 1, -1, 100}), E_INVALIDARG);
  EXPECT_EQ(codeOfReading({kMark, 1, 100, 0x7FFFFFFF}), E_INVALIDARG);
  EXPECT_EQ(codeOfReading({kMark, 1, 100, 100}), S_OK);
}

}  // namespace
