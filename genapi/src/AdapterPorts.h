// What the chunk and event adapters share: a port of their own for each node of a map that it serves.
#ifndef GENAPI_ENGINE_ADAPTERPORTS_H
#define GENAPI_ENGINE_ADAPTERPORTS_H

#include <GenApi/INodeMap.h>
#include <memory>
#include <vector>

namespace GenApiEngine {

// Makes a port for every node of the map and keeps those that attach to their node (attach answers so).
template <typename TPort, typename FAttach>
void attachPorts(GenApi::INodeMap* map, std::vector<TPort*>& ports, FAttach attach) {
    GenApi::NodeList_t nodes;
    map->GetNodes(nodes);
    for (GenApi::INode* node : nodes) {
        std::unique_ptr<TPort> port(new TPort);
        if (attach(*port, node))
            ports.push_back(port.release());
    }
}

}  // namespace GenApiEngine

#endif
