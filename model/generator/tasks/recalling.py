# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""What the user said earlier in the chat."""

from dataclasses import dataclass

from ..documents.asking import ended, with_question
from ..documents.cases import case
from ..example import Example
from ..grammar import Phrases
from ..speech import Speaker
from ..textfiles import FOLDER, sections
from ..values import Slots, fill


@dataclass
class Memory:
    """Something that people tell and ask for again. answer: how the model says it."""

    name: str
    tellings: Phrases
    questions: Phrases
    answers: Phrases


def _memories() -> list[Memory]:
    found = []
    for name, lines in sections(FOLDER / "words" / "memories.txt"):
        def marked(mark: str) -> Phrases:
            return Phrases([line[1:].strip() for line in lines if line[0] == mark], f"memory {name} {mark}")

        found.append(Memory(name, marked(">"), marked("?"), marked("=")))
    return found


MEMORIES = _memories()


def recall_fact(speaker: Speaker) -> Example:
    """A fact that was told before, of the kind that documents state; or one that was not."""
    made = case(speaker, 0.2)
    question = made.question
    told = [fact for fact in made.document.told if not question.is_answered_by(fact)][: speaker.chance.randint(0, 3)]
    if made.is_answered:
        told.insert(speaker.chance.randint(0, len(told)), question.told)
    bare = with_question(speaker.phrase("recall.wrap"), question.bare)
    example = Example("recall" if made.is_answered else "recall.unknown", "", remembers=True)
    example.typed = speaker.typed(bare, question.told.slots)
    for sentence in dict.fromkeys(ended(fact.sentence) for fact in told):
        example.chat.add(speaker.ask("recall.tell", fact=sentence), speaker.fixed("reply.noted"))
    if not made.is_answered:
        return example.replies(speaker.fixed("reply.nottold"), refuses=True, contains=["not told me"])
    sentence = ended(question.told.sentence)
    return example.replies(sentence, contains=[sentence])


def small_talk(speaker: Speaker) -> tuple[str, str]:
    """A message and its answer, to stand between others."""
    intent = speaker.chance.choice(("greet", "thank", "how are you"))
    return speaker.ask(f"talk.{intent}"), speaker.fixed(f"reply.{intent}")


def _told(speaker: Speaker, memory: Memory, slots: Slots) -> tuple[str, str]:
    phrase = memory.tellings.pick_or_seen(speaker.chance, speaker.split)
    return speaker.typed(phrase, slots), speaker.fixed("reply.noted")


def recall(speaker: Speaker) -> Example:
    """Something told before, among other things; or something that never was."""
    chance = speaker.chance
    memories = chance.sample(MEMORIES, chance.randint(1, 4))
    asked = memories[0]
    slots = speaker.slots()
    turns = [_told(speaker, memory, speaker.slots()) for memory in memories[1:]]
    turns += [small_talk(speaker) for _ in range(chance.choice((0, 0, 1)))]
    is_known = chance.random() < 0.8
    if is_known:
        turns.insert(chance.randint(0, len(turns)), _told(speaker, asked, slots))
    bare = asked.questions.pick_or_seen(chance, speaker.split)
    typed = speaker.typed(with_question(speaker.phrase("recall.wrap"), bare), slots)
    example = Example("recall" if is_known else "recall.unknown", typed, remembers=True)
    if not is_known:
        chance.shuffle(turns)
    for question, reply in turns:
        example.chat.add(question, reply)
    if not is_known:
        return example.replies(speaker.fixed("reply.nottold"), refuses=True, contains=["not told me"])
    answer = asked.answers.pick_any(chance)
    return example.replies(fill(answer, slots), contains=[slots[slot] for slot in _open(answer)])


def _open(phrase: str) -> list[str]:
    return [part.split("}")[0] for part in phrase.split("{")[1:]]


def tell(speaker: Speaker) -> Example:
    """Something that is told now: it is noted, and no more."""
    question, reply = _told(speaker, speaker.chance.choice(MEMORIES), speaker.slots())
    return Example("tell", question).replies(reply, contains=["remember"])


def say_again(speaker: Speaker) -> Example:
    """The last answer, or the last question."""
    chance = speaker.chance
    example = Example("recall.again", "", remembers=True)
    turns = [small_talk(speaker) for _ in range(chance.choice((0, 0, 1)))]
    for memory in chance.sample(MEMORIES, chance.randint(1, 2)):
        turns.append(_told(speaker, memory, speaker.slots()))
    asked, slots = chance.choice(MEMORIES), speaker.slots()
    phrase = asked.questions.pick_or_seen(chance, speaker.split)
    turns.append((speaker.typed(phrase, slots), fill(asked.answers.pick_any(chance), slots)))
    for question, reply in turns:
        example.chat.add(question, reply)
    wants_answer = chance.random() < 0.6
    example.typed = speaker.ask("recall.last" if wants_answer else "recall.question")
    reply = turns[-1][1 if wants_answer else 0]
    return example.replies(reply, exact=reply)


def tell_fact(speaker: Speaker) -> Example:
    """The same, of something that has nothing to do with the user."""
    fact = ended(case(speaker, 0).question.told.sentence)
    typed = speaker.ask("recall.tell", fact=fact)
    return Example("tell", typed).replies(speaker.fixed("reply.noted"), contains=["remember"])


TASKS = {"recall": ((recall, 8), (recall_fact, 5), (tell, 1.5), (tell_fact, 0.7), (say_again, 1))}
