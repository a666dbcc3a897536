// Today's engine, which comes as a library, as a server for tests.
//
//     engine_front LIBRARY FOLDER PORT     data go to FOLDER; HTTP on loopback; prints "ready", and ends with its input
//
// As much of the server's HTTP interface as a store uses: a statement in the body, or in the address with rows in the
// body. Other parameters that the engine knows as settings are not passed on: they are for replicas, and it is alone.

#include <dlfcn.h>
#include <microhttpd.h>
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <stdexcept>
#include <string>

namespace {

/// The library's C interface, as far as it is used. It comes without a header.
class Engine {
public:
    Engine(const char* library, const std::string& folder) : m_library(dlopen(library, RTLD_NOW)), m_folder(folder)
    {
        if (!m_library)
            throw std::runtime_error(dlerror());
        load(m_connect, "chdb_connect");
        load(m_query, "chdb_query_n");
        load(m_buffer, "chdb_result_buffer");
        load(m_length, "chdb_result_length");
        load(m_error, "chdb_result_error");
        load(m_destroy, "chdb_destroy_query_result");
        std::string path = "--path=" + folder + "/data", program = "engine_front";
        char* arguments[] = {program.data(), path.data()};
        m_connection = m_connect(2, arguments);
        if (!m_connection)
            throw std::runtime_error("the engine does not start");
    }

    struct Answer {
        bool isError;
        std::string bytes;
    };
    Answer answer(const std::string& statement)
    {
        const std::lock_guard lock(m_mutex);
        static const std::string format = "TabSeparated";
        void* const result = m_query(*m_connection, statement.data(), statement.size(), format.data(), format.size());
        const char* const error = m_error(result);
        Answer answer{error != nullptr, {}};
        if (error)
            answer.bytes = error;
        else if (m_length(result) > 0)
            answer.bytes.assign(m_buffer(result), m_length(result));
        m_destroy(result);
        return answer;
    }
    /// The engine's own statements take rows from a file.
    Answer insert(std::string statement, const std::string& rows)
    {
        const std::string file = m_folder + "/rows" + std::to_string(next());
        std::ofstream(file, std::ios::binary) << rows;
        const std::size_t format = statement.rfind(" FORMAT ");
        if (format == std::string::npos)
            return {true, "Code: 62. DB::Exception: rows without a format"};
        statement.insert(format, " FROM INFILE '" + file + "' COMPRESSION 'none'");
        Answer told = answer(statement);
        unlink(file.c_str());
        told.bytes = told.isError ? told.bytes : std::string();
        return told;
    }

private:
    template <class Function>
    void load(Function& function, const char* name)
    {
        function = reinterpret_cast<Function>(dlsym(m_library, name));
        if (!function)
            throw std::runtime_error(std::string("the library lacks ") + name);
    }
    int next()
    {
        const std::lock_guard lock(m_mutex);
        return ++m_files;
    }

    void* m_library;
    std::string m_folder;
    void** (*m_connect)(int, char**) = nullptr;
    void* (*m_query)(void*, const char*, std::size_t, const char*, std::size_t) = nullptr;
    char* (*m_buffer)(void*) = nullptr;
    std::size_t (*m_length)(void*) = nullptr;
    const char* (*m_error)(void*) = nullptr;
    void (*m_destroy)(void*) = nullptr;
    void** m_connection = nullptr;
    std::mutex m_mutex;
    int m_files = 0;  // under the mutex
};

MHD_Result respond(MHD_Connection* connection, unsigned status, const std::string& bytes)
{
    MHD_Response* const response =
        MHD_create_response_from_buffer(bytes.size(), const_cast<char*>(bytes.data()), MHD_RESPMEM_MUST_COPY);
    const MHD_Result queued = MHD_queue_response(connection, status, response);
    MHD_destroy_response(response);
    return queued;
}

MHD_Result serve(void* engine, MHD_Connection* connection, const char* /*url*/, const char* method,
                 const char* /*version*/, const char* data, std::size_t* size, void** state)
{
    if (!*state) {
        *state = new std::string;
        return MHD_YES;
    }
    auto& body = *static_cast<std::string*>(*state);
    if (*size > 0) {
        body.append(data, *size);
        *size = 0;
        return MHD_YES;
    }
    if (std::string(method) == "GET")
        return respond(connection, 200, "Ok.\n");
    const char* const query = MHD_lookup_connection_value(connection, MHD_GET_ARGUMENT_KIND, "query");
    Engine& served = *static_cast<Engine*>(engine);
    const Engine::Answer answer = query ? served.insert(query, body) : served.answer(body);
    return respond(connection, answer.isError ? 500 : 200, answer.bytes);
}

void forget(void* /*engine*/, MHD_Connection* /*connection*/, void** state, MHD_RequestTerminationCode /*why*/)
{
    delete static_cast<std::string*>(*state);
    *state = nullptr;
}

}  // namespace

int main(int count, char** arguments)
{
    if (count != 4)
        return 2;
    try {
        Engine engine(arguments[1], arguments[2]);
        MHD_Daemon* const daemon =
            MHD_start_daemon(MHD_USE_INTERNAL_POLLING_THREAD | MHD_USE_THREAD_PER_CONNECTION,
                             static_cast<std::uint16_t>(std::atoi(arguments[3])), nullptr, nullptr, serve, &engine,
                             MHD_OPTION_NOTIFY_COMPLETED, forget, nullptr, MHD_OPTION_END);
        if (!daemon)
            throw std::runtime_error("the port is taken");
        std::puts("ready");
        std::fflush(stdout);
        while (std::getchar() != EOF) {
        }
        MHD_stop_daemon(daemon);
        std::_Exit(0);  // the library's own threads need not be waited for
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return 1;
}
