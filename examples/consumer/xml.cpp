#include "examples.h"

#include "runtime/Funktionen32/NumberText.h"
#include "xml/clsXML.h"

// Reading, changing and saving a document by paths.
void xml(tarv::Runtime& rt, const std::wstring& folder) {
    tarv::clsXML document(rt);
    document.OpenFromString(L"<?xml version=\"1.0\"?><Angebot><Los Nr=\"1\">Rohbau</Los></Angebot>", true);
    print(L"ReadNode: " + document.ReadNode(L"Los"));
    print(L"ReadAttribute: " + tarv::textOf(document.ReadAttribute(L"Los", L"Nr"), L"1"));

    document.WriteNode(L"Los", L"Rohbau & Dach");
    document.InsertNode(L"Los", L"Los", 0, L"Außenanlagen", L"Nr", std::wstring(L"2"));
    document.MakeNode(L"/Angebot", L"Farbe");
    document.SetColorValue(L"Farbe", 255, 128, 0);
    document.Save(folder + L"Angebot.xml");

    tarv::clsXML saved(rt);
    print(L"OpenFromFile: " + yesNo(saved.OpenFromFile(folder + L"Angebot.xml", true)));
    print(L"NodeCount: " + std::to_wstring(saved.NodeCount(L"Los")));
    print(L"ReadNode: " + saved.ReadNode(L"Los[@Nr='2']") + L", " + saved.ReadNode(L"Los[@Nr='1']"));
    print(L"GetColorValue: " + std::to_wstring(saved.GetColorValue(L"Farbe")));
}
