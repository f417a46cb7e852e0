// The container library's side: one stream, written in memory.
#include "platform/report/OleContainer.h"

#include "platform/basic/RuntimeError.h"

#include <memory>

// A word of the toolkit and a member's name in the library.
#pragma push_macro("signals")
#undef signals
#include <gsf/gsf.h>
#pragma pop_macro("signals")

using namespace Qt::StringLiterals;

namespace platform {

namespace {
struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using Held = std::unique_ptr<Object, Unref>;
}  // namespace

QByteArray inOleContainer(const QByteArray& streamName, const QByteArray& stream) {
    static const bool ready = (gsf_init(), true);
    Q_UNUSED(ready)
    const Held<GsfOutput> sink(gsf_output_memory_new());
    const Held<GsfOutfile> container(gsf_outfile_msole_new(sink.get()));
    const Held<GsfOutput> child(gsf_outfile_new_child(container.get(), streamName.constData(), FALSE));
    const bool written = child &&
                         gsf_output_write(child.get(), static_cast<std::size_t>(stream.size()),
                                          reinterpret_cast<const guint8*>(stream.constData())) &&
                         gsf_output_close(child.get()) && gsf_output_close(GSF_OUTPUT(container.get()));
    if (!written)
        throw RuntimeError(error::deviceIo, u"The spreadsheet file could not be composed"_s);
    return QByteArray(
        reinterpret_cast<const char*>(gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(sink.get()))),
        static_cast<qsizetype>(gsf_output_size(sink.get())));
}

}  // namespace platform
