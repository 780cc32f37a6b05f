#!/usr/bin/env python3
"""Writes the description of an installer from what is to be installed.

    packaging/wxs.py FOLDER ROWS VERSION WIDTH SCOPE > FILE.wxs

FOLDER holds the files as they are to stand on the machine; ROWS is what `registry_rows` has printed;
WIDTH is x64 or x86; SCOPE machine or user. All identifiers follow from the names, so that the same
files give the same installer, and each version takes the place of the one before.
"""
import os
import sys
import uuid
from xml.sax.saxutils import quoteattr

NAMESPACE = uuid.UUID('6d1b21a5-5c0e-4b6e-9d0f-5f6a8e4c7b12')
LIBRARIES = ('Tessaline.ocx', 'TessalineStore.dll')
PROGRAM = 'TessalineHost.exe'
SHORTCUT = 'Tessaline, démonstration'
WITH_ALL = '*'  # the name of no value: the key is made, and goes with all that is below it


def guid(*words):
    return str(uuid.uuid5(NAMESPACE, '/'.join(words))).upper()


def identifier(kind, *words):
    return kind + uuid.uuid5(NAMESPACE, '/'.join(words)).hex[:24]


def attributes(**values):
    return ' '.join(f'{name}={quoteattr(value)}' for name, value in values.items())


class Installer:
    def __init__(self, folder, rows, version, width, scope):
        self.folder, self.rows = folder, rows
        self.version, self.width, self.scope = version, width, scope
        self.user = scope == 'user'
        self.components = []
        self.lines = []

    def put(self, depth, text):
        self.lines.append('  ' * depth + text)

    # What both widths write is counted by the system as one component of two products.
    def component(self, depth, name, shared=False):
        words = ('component', name, self.scope) if shared else ('component', name, self.width, self.scope)
        each = {'Id': identifier('C', *words), 'Guid': guid(*words)}
        if self.width == 'x64':
            each['Win64'] = 'yes'
        self.components.append(each['Id'])
        self.put(depth, f'<Component {attributes(**each)}>')

    def registry(self, depth, rows, marker):
        root = 'HKCU' if self.user else 'HKLM'
        for number, (_, _, key, name, value) in enumerate(rows):
            each = {'Id': identifier('R', self.width, marker, str(number)), 'Root': root,
                    'Key': 'Software\\Classes\\' + key, 'Type': 'string'}
            if value == '-':
                each.update(Name=WITH_ALL, Value='')
            else:
                each['Value'] = value.replace('{FOLDER}\\', '[INSTALLDIR]').replace('{FOLDER}', '[INSTALLDIR]')
                if name:
                    each['Name'] = name
            self.put(depth, f'<RegistryValue {attributes(**each)}/>')

    # Keys that are of these rows alone, each to go with all that is below it.
    def alone(self, rows):
        keys = []
        for _, kind, key, _, _ in rows:
            parts = key.split('\\')
            if parts[0] == 'TypeLib' and kind == 'own':
                top = key
            else:
                top = '\\'.join(parts[:2] if parts[0] in ('CLSID', 'Interface', 'TypeLib') else parts[:1])
            if top not in keys:
                keys.append(top)
        return [('', '', key, '', '-') for key in keys]

    def file(self, depth, path):
        name = os.path.basename(path)
        inner = os.path.relpath(path, self.folder)
        self.component(depth, inner)
        self.put(depth + 1, '<File ' + attributes(Id=identifier('F', inner), Name=name, Source=inner,
                                                   KeyPath='yes') + '/>')
        if inner in LIBRARIES:
            rows = [row for row in self.rows if row[0] == inner and row[1] == 'own']
            self.registry(depth + 1, self.alone(rows) + rows, inner)
        self.put(depth, '</Component>')

    def files(self, depth, folder):
        for name in sorted(os.listdir(folder)):
            path = os.path.join(folder, name)
            if os.path.isdir(path):
                inner = os.path.relpath(path, self.folder)
                self.put(depth, '<Directory ' + attributes(Id=identifier('D', inner), Name=name) + '>')
                self.files(depth + 1, path)
                self.put(depth, '</Directory>')
            else:
                self.file(depth, path)

    def names(self, depth):
        self.component(depth, 'names', shared=True)
        rows = [row for row in self.rows if row[1] == 'shared']
        self.registry(depth + 1, self.alone(rows) + rows, 'names')
        self.put(depth, '</Component>')

    def shortcut(self, depth):
        self.component(depth, 'shortcut')
        self.put(depth + 1, '<Shortcut ' + attributes(
            Id=identifier('S', SHORTCUT), Name=SHORTCUT if self.width == 'x64' else SHORTCUT + ' (32 bits)',
            Description='Organismes de prise en charge', Target=f'[INSTALLDIR]{PROGRAM}',
            WorkingDirectory='INSTALLDIR') + '/>')
        # What the host remembers of its user goes with it.
        self.put(depth + 1, '<RegistryValue ' + attributes(
            Id=identifier('R', 'settings'), Root='HKCU', Key='Software\\Tessaline\\Démonstration',
            Name=WITH_ALL, Type='string', Value='') + '/>')
        self.put(depth + 1, '<RegistryValue ' + attributes(
            Id=identifier('R', 'shortcut'), Root='HKCU', Key='Software\\Tessaline\\Installation',
            Name=self.width, Type='string', Value=self.version, KeyPath='yes') + '/>')
        self.put(depth, '</Component>')

    def directories(self):
        if self.user:
            parents = ['LocalAppDataFolder', 'Programs']
        else:
            parents = ['ProgramFiles64Folder' if self.width == 'x64' else 'ProgramFilesFolder']
        self.put(2, '<Directory Id="TARGETDIR" Name="SourceDir">')
        for depth, parent in enumerate(parents):
            name = {'Name': parent} if parent == 'Programs' else {}
            self.put(3 + depth, f'<Directory {attributes(Id=parent, **name)}>')
        depth = 3 + len(parents)
        inner = 'Tessaline' if self.width == 'x64' or not self.user else 'Tessaline (32 bits)'
        self.put(depth, f'<Directory {attributes(Id="INSTALLDIR", Name=inner)}>')
        self.files(depth + 1, self.folder)
        self.names(depth + 1)
        self.put(depth, '</Directory>')
        for left in reversed(range(3, depth)):
            self.put(left, '</Directory>')
        self.put(3, '<Directory Id="ProgramMenuFolder">')
        self.shortcut(4)
        self.put(3, '</Directory>')
        self.put(2, '</Directory>')

    def text(self):
        words = (self.width, self.scope)
        self.put(0, '<?xml version="1.0" encoding="utf-8"?>')
        self.put(0, '<Wix xmlns="http://schemas.microsoft.com/wix/2006/wi">')
        self.put(1, '<Product ' + attributes(
            Id=guid('product', self.version, *words), UpgradeCode=guid('upgrade', *words), Name='Tessaline',
            Version=self.version, Manufacturer='Tessaline', Language='1036', Codepage='1252') + '>')
        self.put(2, '<Package ' + attributes(
            Id=guid('package', self.version, *words), InstallerVersion='500', Compressed='yes',
            Languages='1036', Manufacturer='Tessaline', Description='Organismes de prise en charge',
            InstallScope='perUser' if self.user else 'perMachine') + '/>')
        self.put(2, '<MajorUpgrade DowngradeErrorMessage='
                    '"Une version plus récente de Tessaline est déjà installée."/>')
        self.put(2, '<Media Id="1" Cabinet="tessaline.cab" EmbedCab="yes"/>')
        self.directories()
        self.put(2, '<Feature Id="Tout" Title="Tessaline" Level="1">')
        for component in self.components:
            self.put(3, f'<ComponentRef Id="{component}"/>')
        self.put(2, '</Feature>')
        self.put(1, '</Product>')
        self.put(0, '</Wix>')
        return '\n'.join(self.lines) + '\n'


def main():
    folder, rows, version, width, scope = sys.argv[1:]
    with open(rows, encoding='utf-8') as lines:
        table = [line.rstrip('\r\n').split('\t') for line in lines]
    sys.stdout.write(Installer(folder, table, version, width, scope).text())


if __name__ == '__main__':
    main()
